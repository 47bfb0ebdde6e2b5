#include "materials/script_file.h"

#include "base/text.h"
#include "platform/text_file.h"

namespace velinor {

void writeResourceText(const MaterialWriterContext& context, std::string_view fileName,
                       std::string_view text) {
    const std::filesystem::path path = context.folders.resourcesFolder / std::filesystem::path(fileName);
    TextFile file(path);
    file.write(text);
    file.write("\n");
    if (file.close()) {
        context.report.addWritten(path, file.bytesWritten());
    } else {
        context.report.add(MessageId::fileNotWritten, narrowPath(path), file.error());
    }
}

}  // namespace velinor
