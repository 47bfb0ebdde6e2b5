// The images that opening a scene has written for it, and what becomes of them.
#pragma once

#include <filesystem>
#include <optional>

#include "cli/scene_source.h"

namespace velinor {

// Throws CommandError (kFailed) where the image library is not beside the program or cannot be loaded. Before
// anything that may look at images.
void requireImageLibrary();

// Makes every bitmap of an imported scene findable for the exporter, which knows paths by the low byte of
// each character: a bitmap whose path has others than ASCII ones is linked (where that cannot be done,
// copied) into source.images, under the name that it would have in the package. Where the path of
// source.images is not ASCII either, a folder source.links is made: among the system's other temporary ones,
// or else in `spare`. Does nothing for a scene that was not imported: a snapshot says what its host said.
void linkBitmaps(SceneSource& source, const std::filesystem::path& spare);

// The images of a scene that is saved as a snapshot.
class SnapshotImages {
  public:
    // Copies the images of source.images that the scene uses to a folder beside the snapshot `out`,
    // "room.textures" for "room.scene.json", and lets the scene name them there, relative to the folder of
    // `out`. Files of these names are replaced, others stay. Without such images there is no folder. Throws
    // CommandError (kFailed) where that fails.
    SnapshotImages(SceneSource& source, const std::filesystem::path& out);

    // Removes the folder where it is new and the images were not kept.
    ~SnapshotImages();
    SnapshotImages(const SnapshotImages&) = delete;
    SnapshotImages& operator=(const SnapshotImages&) = delete;

    // The snapshot is there: the images stay.
    void keep() { newFolder_.reset(); }

  private:
    std::optional<std::filesystem::path> newFolder_;
};

}  // namespace velinor
