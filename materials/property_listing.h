// The listing that stands in for the script of a material whose class is not exported.
#pragma once

#include <string>
#include <string_view>

#include "host/material.h"
#include "host/property.h"
#include "materials/material_writer_context.h"

namespace velinor {

// Appends the name of each property to a text that the caller keeps alive, in UTF-8, a line each.
class MyProc final : public host::PropertyEnum {
  public:
    explicit MyProc(std::string& names) : names_(names) {}

    // Always asks for the next property.
    bool Proc(host::IGameProperty& property) override;

  private:
    std::string& names_;
};

// Writes the names of the properties of `material`, in the host's order, a line each and an empty one at the
// end, into "NAME.material_properties" of the resources folder, where NAME is the sanitised `scriptName`.
void writePropertyListing(const MaterialWriterContext& context, host::IGameMaterial& material,
                          std::string_view scriptName);

}  // namespace velinor
