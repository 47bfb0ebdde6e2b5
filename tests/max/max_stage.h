// 3ds Max, played by a host: the environment of the SDK's stand-in.
#pragma once

#include "hosts/max/max_sdk.h"

#include <cstdarg>
#include <memory>
#include <string>
#include <vector>

#include "base/text.h"
#include "host/core.h"
#include "hosts/max/max_values.h"
#include "hosts/max/sdk_standin/sdk_environment.h"
#include "tests/max/sdk_scene.h"

namespace velinor {

// The core interface: keeps what it is told.
class StageCore final : public ::Interface, public ::LogSys {
  public:
    explicit StageCore(host::Host& host) : host_(host) {}

    ::Interval GetAnimRange() override {
        const host::Interval range = host_.GetAnimRange();
        return {range.Start(), range.End()};
    }
    HWND GetMAXHWnd() const override { return nullptr; }

    bool ProgressStart(const MCHAR* title, bool dispBar) override {
        if (refusesBar || !dispBar || isBarShown || title == nullptr) return false;
        isBarShown = true;
        ++barsShown;
        return true;
    }
    void ProgressUpdate(int percent, bool showPercent, const MCHAR* title) override {
        if (!isBarShown || !showPercent) return;
        percents.push_back(percent);
        titles.push_back(toUtf8(hostText(title)));
        if (updatesUntilStop > 0 && --updatesUntilStop == 0) cancel = 1;
    }
    void ProgressEnd() override { isBarShown = false; }
    BOOL GetCancel() override { return cancel; }
    void SetCancel(BOOL value) override { cancel = value; }
    ::LogSys* Log() override { return hasLog ? this : nullptr; }

    void LogEntry(DWORD type, BOOL dialogue, const MCHAR* title, const MCHAR* format, ...) override {
        if (dialogue != NO_DIALOG || hostText(format) != u"%ls") return;
        va_list arguments;
        va_start(arguments, format);
        const std::string text = toUtf8(hostText(va_arg(arguments, const MCHAR*)));
        va_end(arguments);
        log.push_back(std::to_string(type) + " " + toUtf8(hostText(title)) + ": " + text);
    }

    bool refusesBar = false;
    bool hasLog = true;
    int updatesUntilStop = 0;  // 0: the user never stops it
    bool isBarShown = false;
    int barsShown = 0;
    BOOL cancel = 0;
    std::vector<int> percents;
    std::vector<std::string> titles;
    std::vector<std::string> log;

  private:
    host::Host& host_;
};

class StageFiles final : public ::IFileResolutionManager {
  public:
    explicit StageFiles(host::Host& host) : host_(host) {}

    bool GetFullFilePath(MaxSDK::Util::Path& path, MaxSDK::AssetManagement::AssetType type,
                         bool /*byPassCache*/) override {
        std::u16string text(hostText(path.GetCStr()));
        askedTypes.push_back(type);
        const auto kind = static_cast<host::AssetType>(type);
        if (!host_.GetFileResolutionManager()->GetFullFilePath(text, kind)) return false;
        path = MaxSDK::Util::Path(maxText(text.c_str()));
        return true;
    }

    std::vector<int> askedTypes;

  private:
    host::Host& host_;
};

// The stage of one test: set up as long as it lives.
class MaxStage final : public SdkEnvironment {
  public:
    explicit MaxStage(host::Host& host) : sdkScene(host), stageCore(host), files(host), host_(host) {
        setSdkEnvironment(this);
    }
    MaxStage(const MaxStage&) = delete;
    MaxStage& operator=(const MaxStage&) = delete;
    ~MaxStage() override { setSdkEnvironment(nullptr); }

    ::Interface* core() override { return &stageCore; }
    ::IGameScene* scene() override { return hasScene ? &sdkScene : nullptr; }
    ::IGameConversionManager* conversionManager() override { return hasManagers ? &sdkScene : nullptr; }
    ::IInstanceMgr* instanceMgr() override { return hasManagers ? &sdkScene : nullptr; }
    ::IFileResolutionManager* fileResolutionManager() override { return hasManagers ? &files : nullptr; }
    BOOL doesFileExist(const MCHAR* file) override { return host_.DoesFileExist(hostText(file)) ? 1 : 0; }
    int showMessage(const MCHAR* text, const MCHAR* caption, UINT type) override {
        messages.push_back(std::to_string(type) + " " + toUtf8(hostText(caption)) + ": " +
                           toUtf8(hostText(text)));
        return 1;
    }
    bool hasRoom() override { return hasMemory; }

    SdkScene sdkScene;
    StageCore stageCore;
    StageFiles files;
    std::vector<std::string> messages;
    bool hasScene = true;
    bool hasManagers = true;
    bool hasMemory = true;

  private:
    host::Host& host_;
};

}  // namespace velinor
