#ifndef KVSYNC_TESTS_SIMULATOR_CLOCK_FAKEPICTURES_H
#define KVSYNC_TESTS_SIMULATOR_CLOCK_FAKEPICTURES_H

#include "VirtualTime.h"
#include "scanner/PictureSource.h"

#include <functional>
#include <optional>

/// What a picture was taken of, as far as the tests look at it.
struct Shown
{
    double tableDegrees;
    int brightness;
    double exposureUs;
};

/// Pictures that take a stated time and say what they show.
class FakePictures final : public Tessel3SyncSimulator::PictureSource
{
public:
    explicit FakePictures(VirtualTime &passed)
        : time(passed)
    {
    }

    /// What a delivered image shows, and whether its middle was spoiled.
    static Shown shownIn(const unsigned char *image);
    static bool isSpoiled(const unsigned char *image, int size);

    int prepareMs = 0;                       ///< a scene at another angle
    std::function<int(int frame)> pictureMs; ///< one delivery; none: no time at all

    bool isReady(const Tessel3SyncSimulator::Shot &shot) const override;
    void prepare(const Tessel3SyncSimulator::Shot &shot) override;
    Tessel3SyncSimulator::Images &take(const Tessel3SyncSimulator::Shot &shot) override;

private:
    VirtualTime &time;
    std::optional<double> readyAt;
    Tessel3SyncSimulator::Images images;
};

#endif
