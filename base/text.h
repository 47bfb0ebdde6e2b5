// The three forms of text that meet in an export: UTF-16 from the host, UTF-8 in the files, low bytes in some
// names.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace velinor {

// UTF-8 of UTF-16 code units. An unpaired surrogate becomes U+FFFD; every other unit is carried over, U+0000
// too.
std::string toUtf8(std::u16string_view utf16);

// UTF-16 of UTF-8, or nothing where `utf8` is not well-formed (overlong forms and surrogates included).
std::optional<std::u16string> toUtf16(std::string_view utf8);

// UTF-16 of bytes of which most are UTF-8: each malformed sequence becomes U+FFFD. For messages and foreign
// names.
std::u16string toUtf16Lossy(std::string_view bytes);

// The low byte of each UTF-16 code unit. Units above U+00FF are mangled: names that go through here are
// defined so.
std::string lowBytes(std::u16string_view utf16);

// UTF-8 of a text whose bytes are the characters below U+0100: what lowBytes gave, if it mangled nothing.
std::string utf8OfLowBytes(std::string_view bytes);

// A name fit for files: every byte other than an ASCII letter, a digit, "-" and "." becomes "_", so the
// length stays. Of a name in UTF-8 each byte beyond ASCII becomes one "_".
std::string sanitiseName(std::string_view name);

// The part of a path after its last "/" or "\": scenes travel between systems, so both separate everywhere.
std::u16string_view lastPathComponent(std::u16string_view path);
std::string_view lastPathComponent(std::string_view path);

// The path that a host's text names: UTF-16 on Windows, where every unit is carried over; UTF-8 elsewhere.
std::filesystem::path toPath(std::u16string_view utf16);

// `path` in UTF-8, for messages, documents and libraries that take it so, and the path of such a text. Off
// Windows both carry the bytes over as they are. On Windows an unpaired surrogate or a malformed sequence
// becomes U+FFFD. Neither depends on a code page; for names that do, see platform/path_text.h.
std::string utf8Path(const std::filesystem::path& path);
std::filesystem::path pathOfUtf8(std::string_view text);

// `text` fit for one line of a terminal: control characters, line ends among them, appear as C escapes ("\n",
// "\x1b").
std::string printable(std::string_view text);

}  // namespace velinor
