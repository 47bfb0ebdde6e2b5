// What a plug-in gives to 3ds Max. The order of the virtual operations is that of the SDK.
#pragma once

#include "hosts/max/sdk_standin/sdk_types.h"

class Interface;
class ExpInterface;

// Describes one class of a plug-in.
class ClassDesc : public MaxHeapOperators {
  public:
    virtual ~ClassDesc() = default;

    virtual int IsPublic() = 0;
    virtual void* Create(BOOL loading = 0) = 0;
    virtual int BeginCreate(Interface* core) {
        static_cast<void>(core);
        return 0;
    }
    virtual int EndCreate(Interface* core) {
        static_cast<void>(core);
        return 0;
    }
    virtual BOOL OkToCreate(Interface* core) {
        static_cast<void>(core);
        return 1;
    }
    virtual const MCHAR* ClassName() = 0;
    virtual const MCHAR* NonLocalizedClassName() = 0;
    virtual const MCHAR* InternalName() { return nullptr; }
    virtual SClass_ID SuperClassID() = 0;
    virtual Class_ID ClassID() = 0;
    virtual const MCHAR* Category() = 0;
    virtual HINSTANCE HInstance() { return nullptr; }
    virtual DWORD InitialRollupPageState() { return 0x7fffffff; }
    virtual bool UseOnlyInternalNameForMAXScriptExposure() { return false; }
};

class ClassDesc2 : public ClassDesc {};

#define IMPEXP_FAIL 0
#define IMPEXP_SUCCESS 1
#define IMPEXP_CANCEL 2

// An exporter.
class SceneExport : public MaxHeapOperators {
  public:
    virtual ~SceneExport() = default;

    virtual int ExtCount() = 0;
    virtual const MCHAR* Ext(int n) = 0;
    virtual const MCHAR* LongDesc() = 0;
    virtual const MCHAR* ShortDesc() = 0;
    virtual const MCHAR* AuthorName() = 0;
    virtual const MCHAR* CopyrightMessage() = 0;
    virtual const MCHAR* OtherMessage1() = 0;
    virtual const MCHAR* OtherMessage2() = 0;
    virtual unsigned int Version() = 0;
    virtual void ShowAbout(HWND owner) = 0;
    virtual int DoExport(const MCHAR* name, ExpInterface* ei, Interface* i, BOOL suppressPrompts = 0,
                         DWORD options = 0) = 0;
    virtual BOOL SupportsOptions(int ext, DWORD options) {
        static_cast<void>(ext);
        static_cast<void>(options);
        return 0;
    }
};
