// The core interface of 3ds Max's SDK, its log, its files and its message box.
#pragma once

#include "hosts/max/sdk_standin/sdk_objects.h"

#define SYSLOG_ERROR 0x00000001
#define SYSLOG_WARN 0x00000002
#define SYSLOG_INFO 0x00000004
#define NO_DIALOG 0

class LogSys {
  public:
    virtual ~LogSys() = default;

    // `format` is that of wide printf.
    virtual void LogEntry(DWORD type, BOOL dialogue, const MCHAR* title, const MCHAR* format, ...) = 0;
};

class Interface {
  public:
    virtual ~Interface() = default;

    virtual Interval GetAnimRange() = 0;
    virtual HWND GetMAXHWnd() const = 0;
    virtual bool ProgressStart(const MCHAR* title, bool dispBar) = 0;
    virtual void ProgressUpdate(int percent, bool showPercent = true, const MCHAR* title = nullptr) = 0;
    virtual void ProgressEnd() = 0;
    virtual BOOL GetCancel() = 0;
    virtual void SetCancel(BOOL value) = 0;
    virtual LogSys* Log() = 0;
};

MAX_SDK_API Interface* GetCOREInterface();
MAX_SDK_API BOOL DoesFileExist(const MCHAR* file, bool allowDirectory = true);

// Whether keys are commands of the host before windows get them.
MAX_SDK_API void DisableAccelerators();
MAX_SDK_API void EnableAccelerators();

namespace MaxSDK {

MAX_SDK_API int MaxMessageBox(HWND owner, const MCHAR* text, const MCHAR* caption, UINT type);

namespace AssetManagement {
enum AssetType : int { kOtherAsset = 0, kBitmapAsset = 1, kXRefAsset = 2 };
}  // namespace AssetManagement

namespace Util {

// Selects the language of the calling library's resources.
MAX_SDK_API void UseLanguagePackLocale();

class Path {
  public:
    explicit Path(const MCHAR* path) : path_(path) {}
    const MCHAR* GetCStr() const { return path_.data(); }

  private:
    MSTR path_;
};

}  // namespace Util
}  // namespace MaxSDK

class IFileResolutionManager {
  public:
    virtual ~IFileResolutionManager() = default;

    MAX_SDK_API static IFileResolutionManager* GetInstance();
    virtual bool GetFullFilePath(MaxSDK::Util::Path& path, MaxSDK::AssetManagement::AssetType type,
                                 bool byPassCache = false) = 0;
};
