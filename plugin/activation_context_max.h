// The look of the windows that the plug-in opens.
#pragma once

#include <windows.h>

namespace velinor {

// While it lives, windows that its thread creates have the common controls that `module`'s manifest (resource
// 2) names, and not those of the program that has loaded the module. Does nothing where there is no such
// manifest: the windows then look older, and work all the same. Guards of one thread end in reverse order.
//
// Some compilers' headers can do this behind macros, others cannot; so it is done by hand for all.
class ActivationContext {
  public:
    explicit ActivationContext(HINSTANCE module);
    ActivationContext(const ActivationContext&) = delete;
    ActivationContext& operator=(const ActivationContext&) = delete;
    ~ActivationContext();

  private:
    HANDLE context_;
    ULONG_PTR cookie_ = 0;
    bool isActive_ = false;
};

}  // namespace velinor
