// Decodes CBOR (RFC 8949) with the typed arrays of RFC 8746 for the snapshot reader.
#pragma once

#include <string_view>

#include "hosts/snapshot/document_builder.h"

namespace velinor {

// Tells the document in `bytes` to `builder`; typed arrays refer to `bytes`. Throws SceneError with the byte
// where it is not CBOR, is cut off, or holds what a snapshot has no use for outside "extras".
void decodeCbor(std::string_view bytes, DocumentBuilder& builder);

}  // namespace velinor
