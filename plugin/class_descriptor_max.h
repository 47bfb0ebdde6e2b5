// The class that the plug-in offers.
#pragma once

#include "hosts/max/max_sdk.h"

namespace velinor {

// Describes the exporter to the host. Operations that are not here keep the host's defaults.
class tolvexClassDesc final : public ::ClassDesc2 {
  public:
    int IsPublic() override;

    // A new exporter, a ::SceneExport of the host's heap; null where it cannot be made.
    void* Create(BOOL loading) override;

    const MCHAR* ClassName() override;
    const MCHAR* NonLocalizedClassName() override;
    const MCHAR* InternalName() override;
    SClass_ID SuperClassID() override;
    Class_ID ClassID() override;
    const MCHAR* Category() override;
    HINSTANCE HInstance() override;
};

// The one descriptor, made when it is first asked for.
tolvexClassDesc& classDescriptor();

}  // namespace velinor
