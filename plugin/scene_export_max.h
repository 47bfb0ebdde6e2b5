// The exporter as the host sees it.
#pragma once

#include "hosts/max/max_sdk.h"

#include <memory>

namespace velinor {

class ExportSession;

// Forwards to a tolvex whose host is 3ds Max. Made on the host's heap; the host deletes it.
class MaxSceneExport final : public ::SceneExport {
  public:
    MaxSceneExport();
    MaxSceneExport(const MaxSceneExport&) = delete;
    MaxSceneExport& operator=(const MaxSceneExport&) = delete;
    ~MaxSceneExport() override;

    int ExtCount() override;
    const MCHAR* Ext(int n) override;
    const MCHAR* LongDesc() override;
    const MCHAR* ShortDesc() override;
    const MCHAR* AuthorName() override;
    const MCHAR* CopyrightMessage() override;
    const MCHAR* OtherMessage1() override;
    const MCHAR* OtherMessage2() override;
    unsigned int Version() override;
    void ShowAbout(HWND owner) override;

    // Exports, and tells the user what is amiss unless prompts are suppressed. Always 1. File-system errors
    // go on to the host, and so does what the host itself has thrown, unless it is a std::exception of
    // another kind; every other failure is told and ends here.
    int DoExport(const MCHAR* name, ::ExpInterface* ei, ::Interface* i, BOOL suppressPrompts,
                 DWORD options) override;

    BOOL SupportsOptions(int ext, DWORD options) override;

  private:
    std::unique_ptr<ExportSession> session_;
};

}  // namespace velinor
