// The views that were made: the newest of each camera is remembered.
#ifndef TESSEL3SYNCSIMULATOR_VIEWCACHE_H
#define TESSEL3SYNCSIMULATOR_VIEWCACHE_H

#include "render/View.h"

#include <functional>
#include <future>
#include <map>
#include <memory>
#include <mutex>

namespace Tessel3SyncSimulator {

/// All operations may be called from any thread.
class ViewCache
{
public:
    using ViewPointer = std::shared_ptr<const View>;
    using Maker = std::function<ViewPointer(const ViewKey &)>;

    explicit ViewCache(Maker viewMaker);

    /// The one of the process.
    static ViewCache &instance();

    /// The view for a key, remembered or made, which takes its time: no lock may be held. Whoever
    /// asks for a view that another thread is making waits for that; nobody else does.
    ViewPointer view(const ViewKey &key);

    /// The view if it is there, or null.
    ViewPointer readyView(const ViewKey &key);

private:
    struct Entry
    {
        ViewKey key;
        std::shared_future<ViewPointer> view;
    };

    Entry *find(const ViewKey &key);
    void forget(const ViewKey &key);

    Maker make;
    std::mutex mutex; ///< held for look-ups alone: the thread that delivers frames needs it too
    std::map<CameraKind, Entry> entries;
};

} // namespace Tessel3SyncSimulator

#endif
