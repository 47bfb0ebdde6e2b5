// What a host asks of an exporter: the plug-in's side of the border.
#pragma once

#include <cstdint>

namespace velinor::host {

// A character and a text of the host at the plug-in border. Texts end with a zero unit.
using MCHAR = char16_t;

class ExpInterface;  // the host's export interface, not used by us
class Interface;     // the host's core interface, not used by us

// An exporter. The order of the operations is that of the SDK.
class SceneExport {
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

    // The version times 100.
    virtual unsigned int Version() = 0;
    virtual void ShowAbout(void* window) = 0;

    // Exports the scene to the package that `name` names. File-system errors and errors of the host leave it
    // as exceptions.
    virtual int DoExport(const MCHAR* name, ExpInterface* ei, Interface* i, int suppressPrompts,
                         std::uint32_t options) = 0;

    virtual int SupportsOptions(int ext, std::uint32_t options) = 0;
};

// The two halves of a class's identity.
struct Class_ID {
    std::uint32_t a = 0;
    std::uint32_t b = 0;

    bool operator==(const Class_ID&) const = default;
};

// Describes one class of a plug-in to the host.
class ClassDesc2 {
  public:
    virtual ~ClassDesc2() = default;

    virtual int IsPublic() = 0;
    virtual void* Create(bool loading) = 0;
    virtual const MCHAR* ClassName() = 0;
    virtual const MCHAR* NonLocalizedClassName() = 0;
    virtual const MCHAR* InternalName() = 0;
    virtual std::uint32_t SuperClassID() = 0;
    virtual Class_ID ClassID() = 0;
    virtual const MCHAR* Category() = 0;
    virtual void* HInstance() = 0;
};

}  // namespace velinor::host
