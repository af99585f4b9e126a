#include "Expectation.h"

#include <QtCore/QByteArray>

namespace KvSyncTest {

using KvSyncCore::DeviceController;

namespace {

std::string takeSnapshot(DeviceController &controller)
{
    QList<CameraSpace::ImageBlock *> blocks;
    const ErrorCode code = controller.grabImage(anyHandle, 9, blocks);
    std::string text = outcome(code);
    for (const CameraSpace::ImageBlock *block : blocks) {
        text += outcome(Success, block->tag, block->width, block->height, int(block->bitDepth),
                        block->data.toHex().toStdString());
    }
    qDeleteAll(blocks);
    return text;
}

const std::string snapshot = "SnapColorImage(device, [], 0, 0, 0, 0, 0, 9)";

} // namespace

std::vector<Expectation> captureExpectations()
{
    return {
        {"grabImage",
         takeSnapshot,
         "SuccessSuccess 0 3 1 8 010203Success 0 3 1 8 040506",
         {debug("grabImage", " grabImage start"), snapshot,
          debug("grabImage", "grabImage success")},
         "CameraFailed",
         {{"SnapColorImage", "CameraFailed",
           Journal{debug("grabImage", " grabImage start"), snapshot,
                   critical("grabImage", "SnapColorImage failed")}}}},
        {"project",
         [](DeviceController &c) {
             return outcome(c.project(anyHandle, ProjectorSpace::SpecklePattern,
                                      ProjectorSpace::HorizontalVariant));
         },
         "Success",
         {debug("project", "project start"), "Project(device, 2)"},
         "ProjectorFailed",
         {{"Project", "ProjectorFailed",
           Journal{debug("project", "project start"), "Project(device, 2)",
                   critical("project", "project failed")}}}},
        {"writeCustomInfo",
         [](DeviceController &c) {
             return outcome(c.writeCustomInfo(anyHandle, 64, QByteArray("to store")));
         },
         "Success",
         {debug("writeCustomInfo", "writeCustomInfo start, data: to store std str size: 8"),
          debug("writeCustomInfo", " std str: to store"),
          R"(WriteUserInfomation(device, 64, "to store", 8))"},
         "DeviceOperationFailed",
         {{"WriteUserInfomation", "DeviceOperationFailed", {}}}},
        {"readCustomInfo",
         [](DeviceController &c) {
             QByteArray data("before");
             const ErrorCode code = c.readCustomInfo(anyHandle, 64, data);
             return outcome(code, data.toStdString());
         },
         "Success stored",
         {debug("readCustomInfo", "readCustomInfo start"), "ReadUserInfomation(device, 64, ?)",
          debug("readCustomInfo", " 2 ReadUserInfomation data: stored")},
         "DeviceOperationFailed ",
         {{"ReadUserInfomation", "DeviceOperationFailed stored", {}}}},
    };
}

} // namespace KvSyncTest
