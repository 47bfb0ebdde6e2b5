// Text out of scene files: names, values and the library's own messages.
#pragma once

#include <string>
#include <string_view>

#include "hosts/import/import_text.h"

struct aiString;

namespace velinor {

struct SourceFile;

// The characters of a library string.
std::string_view textOf(const aiString& text);

// Whether a library string has the greatest length there is, so that the file's text may be longer.
bool isCutOff(const aiString& text);

// UTF-16 of a name: UTF-8 where it is well-formed, otherwise the bytes as Windows-1252, the code page of most
// writers that know nothing of UTF-8. A character that the library cut in two at the end of a long name is
// left out.
std::u16string hostName(const aiString& name);

// UTF-8 of the same.
std::string shownName(const aiString& name);

// `text` with the three entities that ASCII FBX files use: "&quot;", "&cr;" and "&lf;". The writers do not
// escape "&".
std::string decodeFbxEntities(std::string_view text);

// The text of a texture's name as the library hands it over: UTF-8, or else Windows-1252; the entities of
// ASCII FBX decoded.
std::u16string textureName(std::string_view reference, const SourceFile& source);

}  // namespace velinor
