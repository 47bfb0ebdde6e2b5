#include "tools/ogre/uniform_program.h"

#include <OgreHighLevelGpuProgram.h>

#include <map>
#include <memory>
#include <optional>
#include <sstream>

namespace velinor {
namespace {

const Ogre::String kLanguage = "glsl";

struct Uniform {
    Ogre::String name;
    Ogre::GpuConstantType type = Ogre::GCT_FLOAT1;
    std::size_t count = 1;
};

// The uniform that a line of GLSL declares: "uniform vec4 light_colour[8];".
std::optional<Uniform> uniformOf(const std::string& line) {
    static const std::map<std::string, Ogre::GpuConstantType> kTypes{
        {"float", Ogre::GCT_FLOAT1},
        {"vec2", Ogre::GCT_FLOAT2},
        {"vec3", Ogre::GCT_FLOAT3},
        {"vec4", Ogre::GCT_FLOAT4},
        {"int", Ogre::GCT_INT1},
        {"mat3", Ogre::GCT_MATRIX_3X3},
        {"mat4", Ogre::GCT_MATRIX_4X4},
        {"sampler2D", Ogre::GCT_SAMPLER2D},
        {"samplerCube", Ogre::GCT_SAMPLERCUBE},
    };
    std::istringstream words(line.substr(0, line.find(';')));
    std::string keyword;
    std::string type;
    Uniform uniform;
    words >> keyword >> type >> uniform.name;
    const auto known = kTypes.find(type);
    if (keyword != "uniform" || known == kTypes.end()) return std::nullopt;
    uniform.type = known->second;
    const std::size_t bracket = uniform.name.find('[');
    if (bracket != std::string::npos) {
        uniform.count = std::stoul(uniform.name.substr(bracket + 1));
        uniform.name.resize(bracket);
    }
    return uniform;
}

class UniformProgram : public Ogre::HighLevelGpuProgram {
  public:
    UniformProgram(Ogre::ResourceManager* creator, const Ogre::String& name, Ogre::ResourceHandle handle,
                   const Ogre::String& group, bool isManual, Ogre::ManualResourceLoader* loader)
        : HighLevelGpuProgram(creator, name, handle, group, isManual, loader) {
        if (createParamDictionary("UniformProgram")) setupBaseParamDictionary();
    }

    bool isSupported() const override { return true; }
    const Ogre::String& getLanguage() const override { return kLanguage; }

  protected:
    void loadFromSource() override { mSource = _resolveIncludes(mSource, this, mFilename); }
    void createLowLevelImpl() override {}
    void unloadHighLevelImpl() override {}

    void buildConstantDefinitions() const override {
        createParameterMappingStructures(true);
        // Parameters have names and no numbers, as those of real GLSL programs.
        mFloatLogicalToPhysical.reset();
        mIntLogicalToPhysical.reset();
        std::istringstream lines(mSource);
        for (std::string line; std::getline(lines, line);) {
            if (const auto uniform = uniformOf(line)) define(*uniform);
        }
    }

  private:
    void define(const Uniform& uniform) const {
        Ogre::GpuConstantDefinition definition;
        definition.constType = uniform.type;
        definition.arraySize = uniform.count;
        definition.elementSize = Ogre::GpuConstantDefinition::getElementSize(uniform.type, false);
        std::size_t& end =
            definition.isFloat() ? mConstantDefs->floatBufferSize : mConstantDefs->intBufferSize;
        definition.physicalIndex = end;
        end += definition.arraySize * definition.elementSize;
        mConstantDefs->map.emplace(uniform.name, definition);
    }
};

}  // namespace

const Ogre::String& UniformProgramFactory::getLanguage() const {
    return kLanguage;
}

Ogre::GpuProgram* UniformProgramFactory::create(Ogre::ResourceManager* creator, const Ogre::String& name,
                                                Ogre::ResourceHandle handle, const Ogre::String& group,
                                                bool isManual, Ogre::ManualResourceLoader* loader) {
    return std::make_unique<UniformProgram>(creator, name, handle, group, isManual, loader).release();
}

void UniformProgramFactory::destroy(Ogre::GpuProgram* program) {
    const std::unique_ptr<Ogre::GpuProgram> owned(program);
}

}  // namespace velinor
