#include "tests/max/sdk_mesh_object.h"

#include <algorithm>

namespace velinor {
namespace {

::Point3 sdkPoint(const host::Point3& p) {
    return {p.x, p.y, p.z};
}

}  // namespace

SdkMesh::SdkMesh(host::Mesh& mesh) : mesh_(mesh) {
    for (const host::Face& face : mesh.faces()) {
        ::Face& made = faceStore_.emplace_back();
        std::ranges::copy(face.v, made.v);
        made.smGroup = face.smGroup;
        made.flags = face.flags;
    }
    std::ranges::transform(mesh.verts(), std::back_inserter(vertStore_), sdkPoint);
    faces = faceStore_.data();
    verts = vertStore_.data();
    Channel& first = channel(1);
    numTVerts = static_cast<int>(first.verts.size());
    tVerts = mapVerts(1);
    tvFace = mapFaces(1);
}

SdkMesh::Channel& SdkMesh::channel(int number) const {
    const auto found = channels_.find(number);
    if (found != channels_.end()) return found->second;
    Channel& made = channels_[number];
    std::ranges::transform(mesh_.mapVerts(number), std::back_inserter(made.verts), sdkPoint);
    for (const host::TVFace& face : mesh_.mapFaces(number)) {
        std::ranges::copy(face.t, made.faces.emplace_back().t);
    }
    return made;
}

int SdkMesh::getNumMapVerts(int number) const {
    return static_cast<int>(channel(number).verts.size());
}

UVVert* SdkMesh::mapVerts(int number) const {
    return channel(number).verts.empty() ? nullptr : channel(number).verts.data();
}

::TVFace* SdkMesh::mapFaces(int number) const {
    return channel(number).faces.empty() ? nullptr : channel(number).faces.data();
}

void SdkMesh::buildNormals() {
    mesh_.buildNormals();
    rVerts_.assign(vertStore_.size(), {});
    rNormals_.assign(vertStore_.size(), {});
    for (std::size_t i = 0; i < rVerts_.size(); ++i) {
        const host::RVertex given = mesh_.getRVertex(static_cast<std::uint32_t>(i));
        for (const host::RNormal& normal : given.normals)
            rNormals_[i].emplace_back(sdkPoint(normal.normal), normal.smGroup);
        rVerts_[i].rFlags = given.rFlags;
        if (rNormals_[i].size() == 1) rVerts_[i].rn = rNormals_[i].front();
        if (rNormals_[i].size() > 1) rVerts_[i].ern = rNormals_[i].data();
    }
}

::RVertex* SdkMesh::getRVertPtr(int vertex) {
    return &rVerts_.at(static_cast<std::size_t>(vertex));
}

::Point3 SdkMesh::getFaceNormal(int face) const {
    return sdkPoint(mesh_.getFaceNormal(static_cast<std::uint32_t>(face)));
}

RefResult SdkLight::EvalLightState(::TimeValue t, ::Interval& valid, ::LightState* state) {
    const host::LightState given = light_.EvalLightState(t);
    valid = ::Interval(t, t);
    state->type = static_cast<::LightType>(given.type);
    state->color = {given.color.x, given.color.y, given.color.z};
    state->intens = given.intens;
    return 1;
}

void SdkTriObject::DeleteThis() {
    ++count_.ended;
    delete this;
}

::Object* SdkPrimitive::ConvertToType(::TimeValue /*t*/, Class_ID /*type*/) {
    ++count_.made;
    return new SdkTriObject(triangles_, count_);
}

}  // namespace velinor
