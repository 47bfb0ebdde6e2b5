// Makes a compiler of the host's binary interface lay out the tables of what the plug-in gives to the host.
#include "hosts/max/max_sdk.h"

#include "plugin/class_descriptor_max.h"

int makeTables(SceneExport& exporter) {
    const velinor::tolvexClassDesc descriptor;
    static_cast<void>(descriptor);
    return exporter.ExtCount();
}
