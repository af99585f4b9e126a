// The scanner maker's closed library, as this system declares it.
//
// Forty-one free functions, each returning a RETSTATUS; RETSTATUS_SUCCESS (7) is the only success.
// The calls, their order and the numbers are the library's; the names of the enumeration values are
// ours. The spellings Fireware, Dutio, Infomation and DisConnectDevice name the library's exports
// and must stay.
//
// Ownership, for every function: returned strings and image buffers belong to the library; texts
// passed in need to live only until the call returns. `device` is the library's opaque handle, null
// until ConnectDevice has written it.
//
// Threads: callbacks run on threads of the library. The library defines what else may run
// concurrently; the core calls it without a lock of its own.
#ifndef TESSEL3SYNC_TESSEL3SYNC_H
#define TESSEL3SYNC_TESSEL3SYNC_H

#include <string>
#include <vector>

#if defined(_WIN32)
#if defined(TESSEL3SYNC_LIBRARY)
#define TESSEL3SYNC_API __declspec(dllexport)
#else
#define TESSEL3SYNC_API __declspec(dllimport)
#endif
#else
#define TESSEL3SYNC_API __attribute__((visibility("default")))
#endif

namespace Tessel3Sync {

// Every enumeration has a fixed underlying type, so that any integer a host sends through it is
// well defined. The library knows more values than are named here.

/// Result of a call.
enum RETSTATUS : int {
    RETSTATUS_SUCCESS = 7, ///< every other value is a failure
};

/// What controls the strobe, and what triggers a color snapshot.
enum CONTROLROUTE : int {
    CONTROLROUTE_SCAN = 2, ///< the route every scan starts with
};

/// State of the strobe.
enum STROBE_STATE : int {
    STROBE_STATE_SCAN = 4, ///< the state every scan starts with
};

/// What the scanner's distance lamps show.
enum DISTANCESTATUS : int {
    DISTANCESTATUS_SCAN = 3, ///< the indication every scan starts with
};

/// What the projector does.
enum PROJECTWORKTYPES : int {
    PROJECTWORKTYPES_OFF = 0,  ///< projection at the end of a scan
    PROJECTWORKTYPES_SCAN = 2, ///< projection during a scan
};

/// What the cameras are triggered for.
enum CAMERA_TRIGGER_MODE : int {
    CAMERA_TRIGGER_MODE_NO_COLOR = 1, ///< a scan without color
};

/// How the blue laser lines work; no value is known by name.
enum LASERWORKMODE : int {};

/// Receives the images of one delivery.
///
/// `context` is the pointer given at registration. `images` holds one buffer of
/// dimension1 x dimension2 bytes for each camera, `perImage` one integer for each image. The
/// buffers are the library's and stay valid until the callback returns.
typedef void (*ScanCallBack)(const void *const &context, std::vector<unsigned char *> &images,
                             const int &dimension1, const int &dimension2,
                             std::vector<int> &perImage);

/// Receives a change of the scanner's status as two bytes.
typedef void (*StatusCallBack)(const void *const &context, const unsigned char &first,
                               const unsigned char &second);

// Discovery and connection

TESSEL3SYNC_API RETSTATUS GetCamerasInformation(const char *name, std::vector<char *> &serials,
                                                std::vector<int> &a, std::vector<int> &b,
                                                std::vector<bool> &flags, int &count);
TESSEL3SYNC_API RETSTATUS ConnectDevice(const char *mode, const char *extra,
                                        std::vector<char *> &serials, std::vector<int> &a,
                                        std::vector<int> &b, void *&device);
TESSEL3SYNC_API RETSTATUS CloseDeviceCamera(void *&device);
TESSEL3SYNC_API RETSTATUS ReconnectDevice(void *&device);
TESSEL3SYNC_API RETSTATUS DisConnectDevice(void *&device);
TESSEL3SYNC_API RETSTATUS IsConnectedOnU3(const char *name, bool &connected);
TESSEL3SYNC_API RETSTATUS GetFirewareVersion(void *device, const char *first, const char *second,
                                             std::string &version);
TESSEL3SYNC_API RETSTATUS GetCameraCount(const char *name, int &count);
TESSEL3SYNC_API RETSTATUS GetConnectCameraCount(void *&device, int &count);
TESSEL3SYNC_API RETSTATUS GetCameraSerialNumber(void *&device, int index, char *&serial);
TESSEL3SYNC_API RETSTATUS GetCameraResolution(void *&device, int index, int &width, int &height);
TESSEL3SYNC_API RETSTATUS GetStatusDescriptionString(int &status, char *&text);

// Scan session

TESSEL3SYNC_API RETSTATUS SetScanCallBackFunction(void *&device, ScanCallBack function,
                                                  void *context);
TESSEL3SYNC_API RETSTATUS SetStatusCallBackFunction(void *&device, StatusCallBack function,
                                                    void *context);
TESSEL3SYNC_API RETSTATUS SetStrobeControlledByTrigger(void *&device, CONTROLROUTE route,
                                                       STROBE_STATE state);
TESSEL3SYNC_API RETSTATUS SetDistanceIndicate(void *&device, DISTANCESTATUS status);
TESSEL3SYNC_API RETSTATUS Project(void *&device, PROJECTWORKTYPES type);
TESSEL3SYNC_API RETSTATUS EnableIRLaser(void *&device, bool enable);
TESSEL3SYNC_API RETSTATUS EnableBlueLaser(void *&device, LASERWORKMODE mode, bool enable);
TESSEL3SYNC_API RETSTATUS EnableVideoTrigger(void *&device, CAMERA_TRIGGER_MODE mode, bool enable);
TESSEL3SYNC_API RETSTATUS SetVideoTriggerPeriod(void *&device, int period);
TESSEL3SYNC_API RETSTATUS GetVideoTriggerPeriod(void *&device, int &period);

// Light

TESSEL3SYNC_API RETSTATUS SetStrobeDutioRatio(void *&device, int first, int second, int third);
TESSEL3SYNC_API RETSTATUS GetStrobeDutioRatio(void *&device, int &first, int &second, int &third);
TESSEL3SYNC_API RETSTATUS SetLaserLineDutioRatio(void *&device, int ratio);
TESSEL3SYNC_API RETSTATUS GetLaserLineDutioRatio(void *&device, int &ratio);
TESSEL3SYNC_API RETSTATUS SetProjectDutioRatio(void *&device, int ratio);
TESSEL3SYNC_API RETSTATUS GetProjectDutioRatio(void *&device, int &ratio);
TESSEL3SYNC_API RETSTATUS SetIRLaserDutioRatio(void *&device, int ratio);
TESSEL3SYNC_API RETSTATUS GetIRLaserDutioRatio(void *&device, int &ratio);
TESSEL3SYNC_API RETSTATUS SetProjectorBrightness(void *&device, int brightness);
TESSEL3SYNC_API RETSTATUS GetProjectorBrightness(void *&device, int &brightness);

// Cameras

TESSEL3SYNC_API RETSTATUS SetCameraExposureAndGain(void *&device, int camera, double exposure,
                                                   int gain);
TESSEL3SYNC_API RETSTATUS GetCameraExposureAndGain(void *&device, int camera, double &exposure,
                                                   int &gain);
TESSEL3SYNC_API RETSTATUS SetCameraExposure(void *&device, int camera, double exposure);
TESSEL3SYNC_API RETSTATUS GetCameraExposure(void *&device, int camera, double &exposure);
TESSEL3SYNC_API RETSTATUS SetCameraGain(void *&device, int camera, int gain);
TESSEL3SYNC_API RETSTATUS GetCameraGain(void *&device, int camera, int &gain);
TESSEL3SYNC_API RETSTATUS SnapColorImage(void *&device, std::vector<unsigned char *> &images,
                                         int &dimension1, int &dimension2, const int &fifth,
                                         double &sixth, int &seventh, CONTROLROUTE route);

// User information

TESSEL3SYNC_API RETSTATUS WriteUserInfomation(void *&device, int address, const char *data,
                                              int length);
TESSEL3SYNC_API RETSTATUS ReadUserInfomation(void *&device, int address, char *&buffer);

} // namespace Tessel3Sync

#endif
