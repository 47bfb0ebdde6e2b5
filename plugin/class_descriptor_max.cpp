#include "plugin/class_descriptor_max.h"

#include "hosts/max/max_values.h"
#include "plugin/module_max.h"
#include "plugin/scene_export_max.h"

namespace velinor {

int tolvexClassDesc::IsPublic() {
    return 1;
}

// Nothing may be thrown into the host's list of exporters.
void* tolvexClassDesc::Create(BOOL /*loading*/) {
    try {
        return static_cast<::SceneExport*>(new MaxSceneExport);
    } catch (...) {
        return nullptr;
    }
}

const MCHAR* tolvexClassDesc::ClassName() {
    return stringResource(StringResource::className);
}

const MCHAR* tolvexClassDesc::NonLocalizedClassName() {
    return stringResource(StringResource::className);
}

const MCHAR* tolvexClassDesc::InternalName() {
    return maxText(u"tolvex");
}

SClass_ID tolvexClassDesc::SuperClassID() {
    return SCENE_EXPORT_CLASS_ID;
}

Class_ID tolvexClassDesc::ClassID() {
    return {0xC685BBD1, 0x798E359E};
}

const MCHAR* tolvexClassDesc::Category() {
    return stringResource(StringResource::category);
}

HINSTANCE tolvexClassDesc::HInstance() {
    return moduleHandle();
}

tolvexClassDesc& classDescriptor() {
    static tolvexClassDesc descriptor;
    return descriptor;
}

}  // namespace velinor
