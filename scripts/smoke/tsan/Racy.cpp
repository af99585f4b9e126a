// Two threads write one map without a lock: the thread sanitizer has to say so.
#include <QMap>
#include <thread>

int main()
{
    QMap<int, int> map;
    const auto write = [&map] {
        for (int i = 0; i < 100; ++i) {
            map.insert(i, i);
        }
    };
    std::thread other(write);
    write();
    other.join();
}
