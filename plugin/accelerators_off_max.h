// The keyboard commands of the host.
#pragma once

#include "hosts/max/max_sdk.h"

namespace velinor {

// While it lives, keys go to the window that has the keyboard. At other times 3ds Max takes those that are
// its commands, also from the edits of a dialog of ours.
class AcceleratorsOff {
  public:
    AcceleratorsOff() { ::DisableAccelerators(); }
    AcceleratorsOff(const AcceleratorsOff&) = delete;
    AcceleratorsOff& operator=(const AcceleratorsOff&) = delete;
    ~AcceleratorsOff() { ::EnableAccelerators(); }
};

}  // namespace velinor
