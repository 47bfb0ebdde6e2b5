#include "plugin/activation_context_max.h"

namespace velinor {
namespace {

// ISOLATIONAWARE_MANIFEST_RESOURCE_ID, whose macro holds a cast of the old kind.
constexpr WORD kLibraryManifest = 2;

HANDLE contextOf(HINSTANCE module) {
    ACTCTXW request{};
    request.cbSize = sizeof request;
    request.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    request.hModule = module;
    request.lpResourceName = MAKEINTRESOURCEW(kLibraryManifest);
    return CreateActCtxW(&request);
}

}  // namespace

ActivationContext::ActivationContext(HINSTANCE module) : context_(contextOf(module)) {
    if (context_ != INVALID_HANDLE_VALUE) isActive_ = ActivateActCtx(context_, &cookie_) != FALSE;
}

ActivationContext::~ActivationContext() {
    if (isActive_) DeactivateActCtx(0, cookie_);
    if (context_ != INVALID_HANDLE_VALUE) ReleaseActCtx(context_);
}

}  // namespace velinor
