// 3ds Max's SDK, or what stands in for it. Included first wherever it is included: the SDK brings Windows'
// headers, whose macros rename operations such as GetClassName, and both sides must see the same name.
#pragma once

#if defined(TOLVEX_REAL_MAX_SDK)
// The order is that of the SDK's own samples: its headers need each other.
// clang-format off
#include <maxapi.h>
#include <plugapi.h>
#include <iparamb2.h>
#include <impexp.h>
#include <triobj.h>
#include <stdmat.h>
#include <ilayer.h>
#include <iInstanceMgr.h>
#include <ILogSys.h>
#include <systemutilities.h>
#include <IFileResolutionManager.h>
#include <IGame/IGame.h>
#include <IGame/IConversionManager.h>
// clang-format on
#else
#include "hosts/max/sdk_standin/sdk_core.h"
#include "hosts/max/sdk_standin/sdk_igame.h"
#include "hosts/max/sdk_standin/sdk_plugin.h"
#endif

static_assert(MAX_RELEASE >= 24900, "the plug-in is made for 3ds Max 2023 and later");

// The SDK's macros that bear names of the exporter's own constants.
namespace velinor::max {
inline constexpr auto kNormalCountMask = NORCT_MASK;
inline constexpr auto kSpecifiedNormal = SPECIFIED_NORMAL;
}  // namespace velinor::max
#undef NORCT_MASK
#undef SPECIFIED_NORMAL
#undef TIME_NegInfinity
