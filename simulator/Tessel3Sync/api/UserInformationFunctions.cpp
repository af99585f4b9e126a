// The blocks of text that a host keeps in the scanner.
#include "api/Request.h"

using namespace Tessel3SyncSimulator;

RETSTATUS Tessel3Sync::WriteUserInfomation(void *&device, int address, const char *data, int length)
{
    const bool readable = data && isIn(0, length, UserInformationLength);
    return Request(call<indexOf("WriteUserInfomation")>(), device)
        .with(address,
              readable ? std::string(data, static_cast<std::size_t>(length)) : std::string(),
              length)
        .run([&](Scanner &, Lock &) {
            if (!data)
                return refusal(NullArgument);
            if (!isIn(0, address, UserInformationBlocks - 1))
                return refusal(BadAddress);
            if (!readable)
                return refusal(BadLength);
            return SimulatedLibrary::instance().userBlocks().write(
                address, std::string(data, static_cast<std::size_t>(length)));
        });
}

RETSTATUS Tessel3Sync::ReadUserInfomation(void *&device, int address, char *&buffer)
{
    BufferOutput bufferOutput{buffer};
    ReplacementOutput replacement{buffer};
    return Request(call<indexOf("ReadUserInfomation")>(bufferOutput, replacement), device)
        .with(address)
        .run([&](Scanner &, Lock &) {
            if (!buffer)
                return refusal(NullArgument);
            if (!isIn(0, address, UserInformationBlocks - 1))
                return refusal(BadAddress);
            std::string text;
            const RETSTATUS status = SimulatedLibrary::instance().userBlocks().read(address, text);
            if (status == Success)
                writeToBuffer(buffer, text);
            return status;
        });
}
