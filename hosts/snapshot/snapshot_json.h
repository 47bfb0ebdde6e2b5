// Decodes JSON (RFC 8259) for the snapshot reader.
#pragma once

#include <string_view>

#include "hosts/snapshot/document_builder.h"

namespace velinor {

// Tells the document in `bytes` to `builder`; a byte-order mark at the start is passed over. Throws
// SceneError with line, column and byte where it is not JSON or is cut off.
void decodeJson(std::string_view bytes, DocumentBuilder& builder);

}  // namespace velinor
