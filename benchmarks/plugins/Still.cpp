// A device plug-in whose devices do next to nothing: what is left is the call path to them.

#include <KvSyncDevice/CameraInterface.h>
#include <KvSyncDevice/IFactory.h>

class StillCamera : public BaseDeviceSpace::DeviceInterface, public CameraSpace::CameraInterface
{
public:
    using Values = QMap<QString, QVariant>;

    QString name() override { return QStringLiteral("still"); }
    QFlags<BaseDeviceSpace::DeviceType> types() override { return BaseDeviceSpace::CameraDevice; }
    ErrorCode connectDeviceByIndex(int) override { return Success; }
    ErrorCode getProperty(const QString &, Values &) override { return Success; }
    ErrorCode setProperty(const QString &, const Values &) override { return Success; }

    ErrorCode getExposureTimeRange(unsigned int &, unsigned int &, signed char) override
    {
        return Success;
    }
    ErrorCode getGainRange(unsigned short &, unsigned int &, signed char) override
    {
        return Success;
    }
    ErrorCode getMaxImageSize(unsigned int &, unsigned int &, signed char) override
    {
        return Success;
    }
    ErrorCode setInterestSize(unsigned int, unsigned int, signed char) override { return Success; }
    ErrorCode getInterestSize(unsigned int &, unsigned int &, signed char) override
    {
        return Success;
    }
    ErrorCode setAOIOffset(unsigned int, unsigned int, signed char) override { return Success; }
    ErrorCode getAOIOffset(unsigned int &, unsigned int &, signed char) override { return Success; }
    ErrorCode getPixelFormat(CameraSpace::PixelFormatType &, signed char) override
    {
        return Success;
    }
    ErrorCode setTriggerMode(CameraSpace::TriggerMode, signed char) override { return Success; }
    ErrorCode getTriggerMode(CameraSpace::TriggerMode &, signed char) override { return Success; }
    ErrorCode discardFrames(signed char) override { return Success; }
    ErrorCode startStream(signed char) override { return Success; }
    ErrorCode stopStream(signed char) override { return Success; }
};

class Still : public IFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IFactory_iid)
    Q_INTERFACES(IFactory)

public:
    int enumDevices() override { return 1; }
    BaseDeviceSpace::DeviceInterface *createDevice() override { return new StillCamera; }

    ErrorCode destroyDevice(BaseDeviceSpace::DeviceInterface *&device) override
    {
        delete device;
        return Success;
    }
};

#include "Still.moc"
