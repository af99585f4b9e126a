// The newest view of each camera.
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

    /// The only one in the process.
    static ViewCache &instance();

    /// The view for a key, from the cache or newly made, which takes time: no lock may be held.
    /// Only who asks for a view that another thread is making waits for it.
    ViewPointer view(const ViewKey &key);

    /// The view if it is in the cache, or null. Returns at once.
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
    std::mutex mutex; ///< held for lookups only: the frame thread needs it too
    std::map<CameraKind, Entry> entries;
};

} // namespace Tessel3SyncSimulator

#endif
