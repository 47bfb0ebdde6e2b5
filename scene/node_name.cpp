#include "scene/node_name.h"

#include <re2/re2.h>

#include "base/text.h"

namespace velinor {
namespace {

using re2::RE2;
using re2::StringPiece;

// White space is spelled out, since RE2's \s and \S leave out the vertical tab, which counts here:
// [^\t\n\v\f\r] stands for ECMAScript's [\S ] and [\S, ], [^\t\n\v\f\r ] for \S, [^\t\n\v\f\r ,] for [^\s,].
struct Grammar {
    RE2 name{R"(^([^\t\n\v\f\r]+) \[([^\t\n\v\f\r]+)\]$)", bytes()};
    RE2 pair{R"(([^\t\n\v\f\r ]+): ([^\t\n\v\f\r ,]+))", bytes()};

    static RE2::Options bytes() {
        RE2::Options options;
        options.set_encoding(RE2::Options::EncodingLatin1);
        return options;
    }
};

const Grammar& grammar() {
    static const Grammar compiled;
    return compiled;
}

void addPiece(StringPiece piece, NodeNameParts& parts) {
    std::string key;
    std::string value;
    if (!RE2::FullMatch(piece, grammar().pair, &key, &value)) {
        parts.ignored.emplace_back(piece.data(), piece.size());
        return;
    }
    parts.paramKeys.push_back(std::move(key));
    parts.paramValues.push_back(std::move(value));
}

void addPieces(std::string_view list, NodeNameParts& parts) {
    constexpr std::string_view kSeparator = ", ";
    std::size_t start = 0;
    std::size_t end = list.find(kSeparator);
    while (end != std::string_view::npos) {
        addPiece(StringPiece(list.data() + start, end - start), parts);
        start = end + kSeparator.size();
        end = list.find(kSeparator, start);
    }
    addPiece(StringPiece(list.data() + start, list.size() - start), parts);
}

}  // namespace

NodeNameParts parseNodeName(std::string_view name) {
    NodeNameParts parts;
    StringPiece text;
    StringPiece list;
    // Most names have no parameters, and one look at the last character tells.
    if (!name.ends_with(']') ||
        !RE2::FullMatch(StringPiece(name.data(), name.size()), grammar().name, &text, &list)) {
        parts.name = name;
        return parts;
    }
    parts.name.assign(text.data(), text.size());
    addPieces(std::string_view(list.data(), list.size()), parts);
    return parts;
}

NodeNameParts nodeNameUtf8(host::IGameNode& node) {
    return parseNodeName(toUtf8(node.GetName()));
}

}  // namespace velinor
