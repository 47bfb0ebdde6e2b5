#include "materials/property_listing.h"

#include "base/text.h"
#include "materials/script_file.h"

namespace velinor {

bool MyProc::Proc(host::IGameProperty& property) {
    names_ += toUtf8(property.GetName());
    names_ += '\n';
    return false;
}

void writePropertyListing(const MaterialWriterContext& context, host::IGameMaterial& material,
                          std::string_view scriptName) {
    std::string names;
    MyProc listNames(names);
    material.GetIPropertyContainer()->EnumerateProperties(listNames);
    writeResourceText(context, sanitiseName(scriptName) + ".material_properties", names);
}

}  // namespace velinor
