#include "render/ViewCache.h"

#include <chrono>

namespace Tessel3SyncSimulator {

ViewCache::ViewCache(Maker viewMaker)
    : make(std::move(viewMaker))
{
}

ViewCache &ViewCache::instance()
{
    // Never destroyed: the frame thread may need it while the process ends.
    static auto &only =
        *new ViewCache([](const ViewKey &key) { return std::make_shared<const View>(key); });
    return only;
}

ViewCache::ViewPointer ViewCache::view(const ViewKey &key)
{
    std::packaged_task<ViewPointer()> making([&] { return make(key); });
    std::unique_lock<std::mutex> lock(mutex);
    const Entry *entry = find(key);
    const bool isNew = !entry;
    if (isNew)
        entry = &(entries[key.camera] = {key, making.get_future()});
    const std::shared_future<ViewPointer> result = entry->view;
    lock.unlock();

    if (isNew)
        making();
    try {
        return result.get();
    } catch (...) {
        // What failed, for lack of memory say, may succeed another time.
        forget(key);
        throw;
    }
}

ViewCache::ViewPointer ViewCache::readyView(const ViewKey &key)
{
    const std::lock_guard<std::mutex> lock(mutex);
    const Entry *entry = find(key);
    const bool ready =
        entry && entry->view.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    return ready ? entry->view.get() : nullptr;
}

ViewCache::Entry *ViewCache::find(const ViewKey &key)
{
    const auto found = entries.find(key.camera);
    return found != entries.end() && found->second.key == key ? &found->second : nullptr;
}

void ViewCache::forget(const ViewKey &key)
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (find(key))
        entries.erase(key.camera);
}

} // namespace Tessel3SyncSimulator
