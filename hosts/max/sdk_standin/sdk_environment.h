// What stands behind the free functions of the SDK's stand-in. The program that acts as 3ds Max sets it; the
// library of the stand-in passes calls on, as the libraries of the SDK do.
#pragma once

#include "hosts/max/sdk_standin/sdk_core.h"
#include "hosts/max/sdk_standin/sdk_igame.h"

class SdkEnvironment {
  public:
    virtual ~SdkEnvironment() = default;

    virtual Interface* core() = 0;
    virtual IGameScene* scene() = 0;
    virtual IGameConversionManager* conversionManager() = 0;
    virtual IInstanceMgr* instanceMgr() = 0;
    virtual IFileResolutionManager* fileResolutionManager() = 0;
    virtual BOOL doesFileExist(const MCHAR* file) = 0;
    virtual int showMessage(const MCHAR* text, const MCHAR* caption, UINT type) = 0;

    // Whether the host's heap has room for another object.
    virtual bool hasRoom() { return true; }
};

// Null, as at the start: every free function then answers null, false or 0. Not owned.
MAX_SDK_API void setSdkEnvironment(SdkEnvironment* environment);

// How often the host's keyboard accelerators have been switched, since the program began.
struct AcceleratorSwitches {
    int off = 0;
    int on = 0;
};
MAX_SDK_API AcceleratorSwitches acceleratorSwitches();

// How often a library has asked for its resources' language.
MAX_SDK_API int languagePackRequests();
