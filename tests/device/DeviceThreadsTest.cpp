// Eight threads at once on one manager. What makes this test worth running is the thread sanitizer.

#include "device/support/DeviceTest.h"
#include "fixtures/plugins/PlainDevice.h"

#include <QtCore/QCoreApplication>

#include <array>
#include <atomic>
#include <future>
#include <random>
#include <thread>

namespace {

using namespace KvSyncTest;
using KvSyncCore::DeviceManager;

constexpr int threadCount = 8;
constexpr int roundCount = 1000;
constexpr int lineCount = 4; ///< version lines of one plug-in, loaded one after the other

/// Makes devices of its own and counts them. It lets others run at each call: the core must not
/// count on a plug-in that is quick.
class CountingScript : public DeviceScript
{
public:
    IFactory *factory(IFactory *root) override
    {
        std::this_thread::yield();
        return root;
    }

    int enumDevices() override { return 3; }

    BaseDeviceSpace::DeviceInterface *createDevice() override
    {
        std::this_thread::yield();
        ++created;
        return new PlainDevice;
    }

    ErrorCode destroyDevice(BaseDeviceSpace::DeviceInterface *&device) override
    {
        std::this_thread::yield();
        ++destroyed;
        delete static_cast<PlainDevice *>(device);
        return Success;
    }

    std::atomic<int> created{0};
    std::atomic<int> destroyed{0};
};

QString pluginOf(int thread)
{
    return QString("Plugin%1").arg(thread);
}

/// One thread's rounds; what it did wrong, it counts.
class Worker
{
public:
    Worker(DeviceManager &deviceManager, int number, DeviceHandle sharedScanner)
        : manager(deviceManager)
        , own(pluginOf(number))
        , shared(sharedScanner)
        , random(static_cast<unsigned int>(20261120 + number))
    {
    }

    void run()
    {
        for (int round = 0; round < roundCount; ++round) {
            version = QVersionNumber(1, round * lineCount / roundCount);
            expect(manager.loadDevicePlugin(own, version) == Success);
            (this->*steps.at(random() % steps.size()))();
        }
    }

    int failures = 0;
    int left = 0; ///< devices that it did not delete

private:
    using Step = void (Worker::*)();

    void expect(bool holds) { failures += holds ? 0 : 1; }

    void createUseDelete()
    {
        const auto created = manager.createDevice(own, version);
        expect(created.first == Success);
        expect(manager.name(created.second) == qMakePair(Success, QString("plain")));
        expect(manager.connectDeviceByIndex(created.second, 0) == Success);
        expect(manager.stopStream(created.second, 0) == HandleInvalid);
        expect(manager.deleteDevice(created.second) == Success);
    }

    void createAndLeave()
    {
        expect(manager.createDevice(own, version).first == Success);
        ++left;
    }

    void createOfVirtualScanner()
    {
        const auto created = manager.createDevice(virtualScanner, scannerVersion);
        QMap<QString, QVariant> info;
        expect(created.first == Success);
        expect(manager.getProperty(created.second, "info", info) == Success);
        const int index = info.value("index").toInt();
        const ErrorCode connected = manager.connectDeviceByIndex(created.second, index);
        expect(connected == Success ||
               connected == inUse); // by another worker, or as the shared one
        expect(manager.deleteDevice(created.second) == Success);
    }

    void useTheSharedScanner()
    {
        const auto level = static_cast<unsigned char>(random());
        unsigned char red = 0;
        unsigned char green = 0;
        unsigned char blue = 0;
        expect(manager.setProjectorLuminance(shared, level, level, level) == Success);
        expect(manager.getProjectorLuminance(shared, red, green, blue) == Success);
        expect(red == green && green == blue);
        expect(manager.setInterestSize(shared, 1 + random() % 600, 1 + random() % 400, 0) ==
               Success);
        expect(manager.stopMotor(shared, {}) == Success);
    }

    void enumerate()
    {
        expect(manager.enumDevice(own, version) == qMakePair(Success, 3));
        expect(manager.enumDevice(virtualScanner, scannerVersion) == qMakePair(Success, 4));
    }

    void missHandles()
    {
        expect(manager.deleteDevice(0) == HandleInvalid);
        expect(manager.types(-1).first == HandleInvalid);
    }

    static constexpr std::array<Step, 6> steps = {
        &Worker::createUseDelete,     &Worker::createAndLeave, &Worker::createOfVirtualScanner,
        &Worker::useTheSharedScanner, &Worker::enumerate,      &Worker::missHandles};

    const QString virtualScanner = "VirtualScanner";
    const QVersionNumber scannerVersion{1, 0};
    const ErrorCode inUse = static_cast<ErrorCode>(0x01F00016); ///< VirtualScanner's own code
    DeviceManager &manager;
    const QString own;
    QVersionNumber version; ///< of the plug-in that is its own
    const DeviceHandle shared;
    std::minstd_rand random;
};

class DeviceThreads : public DeviceTest
{
protected:
    DeviceThreads()
    {
        DeviceScript::use(&script);
        for (int i = 0; i < threadCount * lineCount; ++i) {
            const QString line = QString(".1.%1.1.dll").arg(i % lineCount);
            copyFixture("Scripted", pluginOf(i / lineCount) + line);
        }
        const QString fileName = "VirtualScanner.1.0.1.dll";
        folder.copyModule(QCoreApplication::applicationDirPath() + "/../../bin/Device/" + fileName,
                          fileName);
        EXPECT_EQ(manager->loadDevicePlugin(virtualScanner, version), Success);
    }

    DeviceHandle openScanner()
    {
        const DeviceHandle handle = manager->createDevice(virtualScanner, version).second;
        EXPECT_EQ(manager->connectDeviceByIndex(handle, 0), Success);
        return handle;
    }

    const QString virtualScanner = "VirtualScanner";
    CountingScript script;
};

TEST_F(DeviceThreads, CreateUseDeleteLoadAndEnumerateAtOnceWithBalancedCounts)
{
    const DeviceHandle shared = openScanner();
    std::vector<Worker> workers;
    for (int i = 0; i < threadCount; ++i)
        workers.emplace_back(*manager, i, shared);
    std::promise<void> allAreThere;
    const std::shared_future<void> start(allAreThere.get_future());
    std::vector<std::thread> threads;
    for (Worker &worker : workers) {
        threads.emplace_back([&worker, start] {
            start.wait();
            worker.run();
        });
    }
    allAreThere.set_value();
    for (std::thread &thread : threads)
        thread.join();

    int left = 0;
    for (const Worker &worker : workers) {
        EXPECT_EQ(worker.failures, 0);
        left += worker.left;
    }
    EXPECT_GT(left, 0);
    EXPECT_GT(script.destroyed, 0);
    EXPECT_EQ(script.created - script.destroyed, left);
    endManager();
    EXPECT_EQ(script.created, script.destroyed);
}

} // namespace
