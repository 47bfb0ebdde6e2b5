#include "descriptors/sun_positioner.h"

#include <cmath>

namespace velinor {
namespace {

using host::GMatrix;

constexpr double kRadiansPerDegree = 0.017453292519943295;

float parameter(host::IGameObject& object, host::HostText name) {
    float degrees = 0;
    host::IPropertyContainer* parameters = object.GetIPropertyContainer();
    const host::IGameProperty* property = parameters == nullptr ? nullptr : parameters->QueryProperty(name);
    if (property != nullptr) property->GetPropertyValue(degrees);
    return degrees;
}

// Row-vector matrices of right-handed rotations by `angle` radians.
GMatrix rotationAboutX(double angle) {
    const auto c = static_cast<float>(std::cos(angle));
    const auto s = static_cast<float>(std::sin(angle));
    return {{1, 0, 0, 0}, {0, c, s, 0}, {0, -s, c, 0}, {0, 0, 0, 1}};
}
GMatrix rotationAboutY(double angle) {
    const auto c = static_cast<float>(std::cos(angle));
    const auto s = static_cast<float>(std::sin(angle));
    return {{c, 0, -s, 0}, {0, 1, 0, 0}, {s, 0, c, 0}, {0, 0, 0, 1}};
}

// R * M * R^-1 for a rotation R, whose inverse is its transpose: exact, so that what the turn leaves alone
// stays exact.
GMatrix conjugated(const GMatrix& m, const GMatrix& rotation) {
    GMatrix transposed;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            transposed[row][static_cast<std::size_t>(column)] =
                rotation[column][static_cast<std::size_t>(row)];
        }
    }
    return rotation * m * transposed;
}

}  // namespace

bool isSunPositioner(const host::Object& object) {
    return object.GetObjectName().find(u"Sun Positioner") != host::HostText::npos;
}

host::Quat sunPositionerOrientation(host::IGameObject& object, const GMatrix& rotation) {
    const double altitude = parameter(object, u"altitude_deg") * kRadiansPerDegree;
    const float bearing = -(parameter(object, u"azimuth_deg") + parameter(object, u"north_direction_deg"));
    const GMatrix raised = conjugated(rotation, rotationAboutX(altitude));
    const GMatrix turned = conjugated(raised, rotationAboutY(bearing * kRadiansPerDegree));
    host::Quat orientation = host::QuatFromRotationMatrix(turned) * host::Quat{1, 0, 0, 1};
    orientation.Normalize();
    return orientation;
}

}  // namespace velinor
