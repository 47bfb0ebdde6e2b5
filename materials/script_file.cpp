#include "materials/script_file.h"

#include "base/text.h"
#include "platform/path_text.h"
#include "platform/text_file.h"

namespace velinor {

void writeResourceText(const MaterialWriterContext& context, std::string_view fileName,
                       std::string_view text) {
    const std::filesystem::path path = asNarrowFile(context.folders.resourcesFolder) / pathOfNarrow(fileName);
    TextFile file(path);
    file.write(text);
    file.write("\n");
    if (file.close()) {
        context.report.addWritten(path, file.bytesWritten());
    } else {
        context.report.add(MessageId::fileNotWritten, utf8Path(path), file.error());
    }
}

}  // namespace velinor
