// The six functions by which the host asks what is in the plug-in. Which names the library exports is said by
// tolvex.def and tolvex.map.
#include "hosts/max/max_sdk.h"

#include "plugin/class_descriptor_max.h"
#include "plugin/module_max.h"

// The host takes only plug-ins of its own release.
static_assert(MAX_RELEASE != 25000 || VERSION_3DSMAX == 0x61A83E00, "the version number of 3ds Max 2023");

extern "C" {

const MCHAR* LibDescription() {
    return velinor::stringResource(velinor::StringResource::libDescription);
}

int LibNumberClasses() {
    return 1;
}

ClassDesc* LibClassDesc(int index) {
    return index == 0 ? &velinor::classDescriptor() : nullptr;
}

ULONG LibVersion() {
    return VERSION_3DSMAX;
}

int LibInitialize() {
    return 1;
}

int LibShutdown() {
    return 1;
}

}  // extern "C"
