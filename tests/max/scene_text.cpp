#include "tests/max/scene_text.h"

#include <iterator>
#include <map>
#include <sstream>
#include <vector>

#include "base/text.h"

namespace velinor {
namespace {

class SceneText {
  public:
    explicit SceneText(host::Host& host) : host_(host) { text_ << std::hexfloat; }

    std::string run() {
        host::IGameScene& scene = *host_.GetIGameInterface();
        line("enumerated", scene.InitialiseIGame(false));
        line("nodes", scene.GetTotalNodeCount());
        line("animation", host_.GetAnimRange().Start());
        std::vector<host::IGameNode*> open;
        for (int i = scene.GetTopLevelNodeCount(); i-- > 0;)
            open.push_back(scene.GetTopLevelNode(i));
        while (!open.empty()) {
            host::IGameNode* node = open.back();
            open.pop_back();
            addNode(*node);
            for (int i = node->GetChildCount(); i-- > 0;)
                open.push_back(node->GetNodeChild(i));
        }
        line("materials", materials_.size());
        return text_.str();
    }

  private:
    template <class T>
    void line(const char* what, const T& value) {
        text_ << what << ": " << value << '\n';
    }
    void line(const char* what, host::HostText value) { line(what, toUtf8(value)); }
    void line(const char* what, const host::Point3& p) {
        text_ << what << ": " << p.x << ' ' << p.y << ' ' << p.z << '\n';
    }

    void addNode(host::IGameNode& node) {
        line("node", node.GetName());
        host::INode& maxNode = *node.GetMaxNode();
        line("host's name", maxNode.GetName());
        line("is the same host node", &maxNode == node.GetMaxNode());
        line("selected", maxNode.Selected());
        line("hidden", maxNode.IsObjectHidden());
        line("on a layer", maxNode.GetLayer() != nullptr);
        if (maxNode.GetLayer() != nullptr) line("layer hidden", maxNode.GetLayer()->IsHidden(true));
        for (const char16_t* key : {u"qv_wt_res_w", u"qv_wt_res_h"}) {
            std::int32_t value = -7;
            line("user property there", maxNode.GetUserPropInt(key, value));
            line("user property", value);
        }
        const auto objectToWorld = node.GetObjectTM();
        for (int i = 0; i < 4; ++i) {
            for (const float entry : objectToWorld[i])
                line("matrix", entry);
        }
        line("children", node.GetChildCount());
        addInstances(node);
        addMaterial(node.GetNodeMaterial());
        addObject(node);
        node.ReleaseIGameObject();
    }

    void addInstances(host::IGameNode& node) {
        const host::INodeTab instances = host_.GetInstanceMgr()->GetInstances(*node.GetMaxNode());
        for (int i = 0; i < instances.Count(); ++i) {
            line("instance", instances[i]->GetName());
            line("itself", instances[i] == node.GetMaxNode());
        }
    }

    void addObject(host::IGameNode& node) {
        host::IGameObject* object = node.GetIGameObject();
        line("object", object != nullptr);
        if (object == nullptr) return;
        line("the same again", object == node.GetIGameObject());
        line("type", object->GetIGameType());
        host::Object& maxObject = *object->GetMaxObject();
        line("class", maxObject.GetObjectName());
        const host::Box3 box = maxObject.GetDeformBBox(0);
        line("box from", box.pmin);
        line("box to", box.pmax);
        if (object->GetIPropertyContainer() != nullptr) addProperties(*object->GetIPropertyContainer());
        if (object->GetIGameType() == host::IGameObject::IGAME_LIGHT) {
            const auto state = static_cast<host::LightObject&>(maxObject).EvalLightState(0);
            line("light", state.type);
            line("colour", state.color);
            line("intensity", state.intens);
        }
        if (object->GetIGameType() == host::IGameObject::IGAME_MESH)
            addMesh(node, static_cast<host::IGameMesh&>(*object));
    }

    void addMesh(host::IGameNode& node, host::IGameMesh& object) {
        line("prepared", object.InitializeData());
        line("face count", object.GetNumberOfFaces());
        for (const int id : object.GetActiveMatIDs())
            line("active ID", id);
        host::Object* evaluated = node.GetMaxNode()->EvalWorldState(0);
        host::TriObject* triangles = evaluated == nullptr ? nullptr : evaluated->ConvertToTriObject(0);
        line("triangles", triangles != nullptr);
        if (triangles == nullptr) return;
        host::Mesh& mesh = triangles->GetMesh();
        mesh.buildNormals();
        addFaces(mesh);
        line("map channels", mesh.getNumMaps());
        for (int channel = 1; channel < mesh.getNumMaps(); ++channel)
            addChannel(mesh, channel);
        if (triangles != evaluated) triangles->DeleteThis();
    }

    void addFaces(const host::Mesh& mesh) {
        for (const host::Point3& p : mesh.verts())
            line("vertex", p);
        for (std::uint32_t f = 0; f < mesh.faces().size(); ++f) {
            const host::Face& face = mesh.faces()[f];
            for (const std::uint32_t index : face.v)
                line("corner", index);
            line("smoothing", face.smGroup);
            line("flags", face.flags);
            line("face normal", mesh.getFaceNormal(f));
        }
        for (std::uint32_t v = 0; v < mesh.verts().size(); ++v) {
            const host::RVertex vertex = mesh.getRVertex(v);
            line("normals", vertex.rFlags);
            for (const host::RNormal& normal : vertex.normals) {
                line("normal", normal.normal);
                line("smoothing of normal", normal.smGroup);
            }
        }
    }

    void addChannel(const host::Mesh& mesh, int channel) {
        line("channel", mesh.mapSupport(channel));
        for (const host::UVVert& p : mesh.mapVerts(channel))
            line("map vertex", p);
        for (const host::TVFace& face : mesh.mapFaces(channel)) {
            for (const std::uint32_t index : face.t)
                line("map corner", index);
        }
    }

    // Each material once; where it comes again, its number.
    void addMaterial(host::IGameMaterial* material) {
        line("material", material != nullptr);
        if (material == nullptr) return;
        const auto [found, isNew] = materials_.try_emplace(material, materials_.size());
        line("number", found->second);
        if (!isNew) return;
        line("material class", material->GetMaterialClass());
        line("material name", material->GetMaterialName());
        addProperties(*material->GetIPropertyContainer());
        addValue("diffuse", material->GetDiffuseData());
        addValue("opacity", material->GetOpacityData());
        addValue("glossiness", material->GetGlossinessData());
        addValue("specular", material->GetSpecularData());
        for (int i = 0; i < material->GetNumberOfTextureMaps(); ++i) {
            line("slot", material->GetIGameTextureMap(i)->GetStdMapSlot());
            addMap(material->GetIGameTextureMap(i)->GetMaxTexmap());
        }
        for (int i = 0; i < material->GetSubMaterialCount(); ++i) {
            line("sub-material", material->GetMaterialID(i));
            addMaterial(material->GetSubMaterial(i));
        }
    }

    void addMap(const host::Texmap* map) {
        line("map", map != nullptr);
        if (map == nullptr) return;
        line("map class", map->GetClassName());
        line("map file", map->GetMapName());
        for (int i = 0; i < 2; ++i)
            addMap(map->GetSubTexmap(i));
    }

    void addProperties(host::IPropertyContainer& container) {
        struct Names final : host::PropertyEnum {
            bool Proc(host::IGameProperty& property) override {
                names.emplace_back(property.GetName());
                return false;
            }
            std::vector<std::u16string> names;
        } names;
        container.EnumerateProperties(names);
        for (const std::u16string& name : names.names) {
            line("property", host::HostText(name));
            addValue("value", container.QueryProperty(name));
        }
        line("no such property", container.QueryProperty(u"no such property") == nullptr);
    }

    void addValue(const char* what, host::IGameProperty* property) {
        line(what, property != nullptr);
        if (property == nullptr) return;
        float number = -7;
        host::Point3 three{-7, -7, -7};
        host::Point4 four{-7, -7, -7, -7};
        line("is a number", property->GetPropertyValue(number));
        line("number", number);
        line("are three", property->GetPropertyValue(three));
        line("three", three);
        line("are four", property->GetPropertyValue(four));
        line("four", host::Point3{four.x, four.y, four.z});
        line("the fourth", four.w);
        addMap(property->GetTexmap());
    }

    host::Host& host_;
    std::ostringstream text_;
    std::map<const host::IGameMaterial*, std::size_t> materials_;
};

}  // namespace

std::string sceneText(host::Host& host) {
    return SceneText(host).run();
}

}  // namespace velinor
