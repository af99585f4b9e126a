// Correct code over what the library and its tests use of Qt and glog: the thread sanitizer has
// nothing to say about it. Exits 0 when all values came through.
#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QMap>
#include <QReadWriteLock>
#include <QSharedPointer>
#include <QSignalSpy>
#include <QStringList>
#include <QThread>
#include <QVariant>
#include <glog/logging.h>
#include <thread>

namespace {

constexpr int rounds = 200;
constexpr int keys = 17;

class CountingSink : public google::LogSink
{
public:
    void send(google::LogSeverity, const char *, const char *, int, const struct ::tm *,
              const char *, size_t) override
    {
        ++lines; // glog calls one sink at a time
    }

    int lines = 0;
};

class Emitter : public QObject
{
    Q_OBJECT

public slots:
    void emitFor(int number) { emit emitted({number, QStringLiteral("text")}); }

signals:
    void emitted(const QVariantList &values);
};

class Registry
{
public:
    void insert(const QString &key, int value)
    {
        const QWriteLocker locker(&lock);
        map.insert(key, QSharedPointer<QString>::create(QString::number(value)));
        order.append(key);
    }

    // The copies share their data with the members until one of the two writes.
    int sizeWithout(const QString &key) const
    {
        lock.lockForRead();
        QMap<QString, QSharedPointer<QString>> copy = map;
        const QStringList names = order;
        lock.unlock();
        copy.remove(key);
        return copy.size() + (names.contains(key) ? 1 : 0);
    }

private:
    mutable QReadWriteLock lock;
    QMap<QString, QSharedPointer<QString>> map;
    QStringList order;
};

void work(Registry &registry, int id)
{
    for (int i = 0; i < rounds; ++i) {
        const QString key = QStringLiteral("key %1").arg(i % keys);
        registry.insert(key, id);
        if (registry.sizeWithout(key) > keys) {
            qFatal("more keys than were inserted");
        }
        if (i % 10 == 0) {
            google::LogMessage(__FILE__, __LINE__, google::GLOG_INFO).stream() << "round " << i;
            qDebug().nospace().noquote() << "from " << id << QVariantMap{{"round", i}};
            QDir::temp().entryList({QStringLiteral("*.dll")}, QDir::Files, QDir::NoSort);
        }
    }
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    CountingSink sink;
    google::AddLogSink(&sink);

    Registry registry;
    QThread *const inQt = QThread::create([&registry] { work(registry, 1); });
    inQt->start();
    std::thread inStandard([&registry] { work(registry, 2); });

    QThread emitting;
    Emitter emitter;
    emitter.moveToThread(&emitting);
    emitting.start();
    const QSignalSpy spy(&emitter, &Emitter::emitted);
    int received = 0;
    QObject::connect(&emitter, &Emitter::emitted, &application, [&received] {
        if (++received == rounds) {
            QCoreApplication::quit();
        }
    });
    for (int i = 0; i < rounds; ++i) {
        QMetaObject::invokeMethod(&emitter, "emitFor", Qt::QueuedConnection, Q_ARG(int, i));
    }
    QCoreApplication::exec();
    emitting.quit();
    emitting.wait();

    inStandard.join();
    inQt->wait();
    delete inQt;
    google::RemoveLogSink(&sink);
    return spy.count() == rounds && sink.lines == 2 * rounds / 10 ? 0 : 1;
}

#include "Correct.moc"
