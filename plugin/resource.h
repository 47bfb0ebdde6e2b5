// The numbers and the texts of the plug-in's resources. Read by the resource compiler, too: macros only.
#pragma once

#define TOLVEX_EXPORTER_NAME "Velinor scene exporter"
#define TOLVEX_CATEGORY "Velinor"

#define IDD_OPTIONS 101

// Texts and groups, which nothing asks for; the resource headers of some compilers lack it.
#ifndef IDC_STATIC
#define IDC_STATIC (-1)
#endif

#define IDC_SELECTION_ONLY 1001
#define IDC_EXPORT_HIDDEN 1014
#define IDC_EXPORT_BONES 1015
#define IDC_EXPORT_ANIMATION 1016
#define IDC_EXPORT_MATERIALS 1017
#define IDC_EXPORT_LIGHTS 1018
#define IDC_HELPER_LIGHTS 1019
#define IDC_EXPORT_CAMERA 1020
#define IDC_HELPER_LIGHT_PERCENT 1021
#define IDC_EXPORT_GEOMETRY 1022
#define IDC_EXPORT_WEBTABLES 1023
#define IDC_AMBIENT_RED 1024
#define IDC_AMBIENT_GREEN 1025
#define IDC_AMBIENT_BLUE 1026
#define IDC_BROWSE_ENVIRONMENT_MAP 1027
#define IDC_BROWSE_REFLECTION_MAP 1028
#define IDC_ENVIRONMENT_MAP 1029
#define IDC_FALLBACK_QUALITY 1030
#define IDC_REFLECTION_MAP 1031
#define IDC_CLEAN_EXPORT_FOLDER 1032
#define IDC_GENERATE_PHYSICAL_MESHES 1033
#define IDC_POLYCOUNT_GOAL 1034
#define IDC_AUTO_PARAMS 1035
