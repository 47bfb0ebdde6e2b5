// Text as a host holds it.
#pragma once

#include <string_view>

namespace velinor::host {

// Text of the host: UTF-16 code units, possibly with unpaired surrogates. Owned by whatever returned it and
// valid as long as that exists; an adapter to the SDK makes it of a const MCHAR*.
using HostText = std::u16string_view;

}  // namespace velinor::host
