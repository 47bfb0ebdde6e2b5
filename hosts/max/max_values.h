// Texts and plain values, carried over between the SDK and the exporter.
#pragma once

#include "hosts/max/max_sdk.h"

#include <string>

#include "host/geometry.h"
#include "host/gmatrix.h"
#include "host/text.h"

namespace velinor {

static_assert(sizeof(MCHAR) == sizeof(char16_t), "the SDK's texts are UTF-16");

// A view of a text of the SDK, which lives as long as that; empty for null.
inline host::HostText hostText(const MCHAR* text) {
    return text == nullptr ? host::HostText() : host::HostText(reinterpret_cast<const char16_t*>(text));
}

// The exporter's text as the SDK takes it: `text` ends with a zero unit and keeps its owner.
inline const MCHAR* maxText(const char16_t* text) {
    return reinterpret_cast<const MCHAR*>(text);
}

// A copy that ends with a zero unit.
inline std::basic_string<MCHAR> maxString(host::HostText text) {
    return {text.begin(), text.end()};
}

inline host::Point3 hostPoint(const ::Point3& p) {
    return {p.x, p.y, p.z};
}

inline host::GMatrix hostMatrix(const ::GMatrix& matrix) {
    host::GMatrix result;
    for (int i = 0; i < 4; ++i) {
        const ::Point4 row = matrix.GetRow(i);
        result[i] = {row.x, row.y, row.z, row.w};
    }
    return result;
}

}  // namespace velinor
