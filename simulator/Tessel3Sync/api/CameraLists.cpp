#include "api/CameraLists.h"

#include "api/Outputs.h"

#include <algorithm>
#include <cstring>

namespace Tessel3SyncSimulator {

namespace {

constexpr const char *scannerName = "KV-SIM-0001";

const char *serialSuffix(CameraKind kind)
{
    switch (kind) {
    case CameraKind::LeftSpeckle:
        return "-L";
    case CameraKind::RightSpeckle:
        return "-R";
    case CameraKind::Color:
        return "-C";
    }
    return "";
}

} // namespace

char *cameraSerial(CameraKind kind)
{
    return lastingText(std::string(scannerName) + serialSuffix(kind));
}

std::vector<ListedCamera> listedCameras(const ScannerSetup &setup)
{
    std::vector<ListedCamera> list;
    for (const CameraKind kind : setup.cameras) {
        list.push_back({kind, cameraSerial(kind), kind == CameraKind::Color ? 1 : 0,
                        static_cast<int>(list.size())});
    }
    return list;
}

RETSTATUS checkName(const Scanner &scanner, const char *name)
{
    if (!name)
        return refusal(NullArgument);
    const bool ours = *name == '\0' || std::strcmp(name, scannerName) == 0;
    return scanner.isAttached() && ours ? Success : refusal(UnknownScanner);
}

RETSTATUS chooseCameras(const ScannerSetup &setup, const std::vector<char *> &serials,
                        const std::vector<int> &a, const std::vector<int> &b,
                        std::vector<CameraKind> &chosen)
{
    if (serials.empty() || a.size() != serials.size() || b.size() != serials.size())
        return refusal(ListMismatch);
    const auto listed = listedCameras(setup);
    for (std::size_t i = 0; i < serials.size(); ++i) {
        if (!serials[i])
            return refusal(NullArgument);
        const auto found = std::find_if(listed.begin(), listed.end(), [&](const ListedCamera &one) {
            return std::strcmp(one.serial, serials[i]) == 0;
        });
        if (found == listed.end())
            return refusal(UnknownScanner);
        if (found->color != a[i] || found->port != b[i])
            return refusal(ListMismatch);
        if (std::find(chosen.begin(), chosen.end(), found->kind) == chosen.end())
            chosen.push_back(found->kind);
    }
    return Success;
}

} // namespace Tessel3SyncSimulator
