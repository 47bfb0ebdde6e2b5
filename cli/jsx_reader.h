// Reads the text of an index.jsx back: the reverse of how packages write it.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace velinor {

// An attribute as it stands in the file. Keys carry their "=" ("position="), by which they are ordered;
// values are whole, braces or quotes included. Only the spread attribute has the key "..." and, as its value,
// what stands between
// "{...{ " and " }}".
struct JsxAttribute {
    std::string_view key;
    std::string_view value;
};

// The start of an element.
struct JsxElement {
    std::string_view name;
    std::size_t depth = 0;  // 0 for the root
    std::size_t line = 0;   // from 1
    std::vector<JsxAttribute> attributes;
    std::string_view parent;  // the name of the element around it; empty for the root
};

// Something in the text that breaks the form.
struct JsxFault {
    std::size_t line;  // from 1
    std::string text;
};

// Reads `text` and gives each element to `take` when its start has been read; views are into `text`. Stops at
// the first fault and returns it, or a fault with line 0 where there is none. The form, with a tab for each
// level of depth:
//
//     <node
//     	position={{ x: 0.000000, y: 0.000000, z: 0.000000 }}>
//     	<mesh
//     		{...{ url: 'Chair.mesh' }}>
//     	</mesh>
//     </node>
//
// Attributes come in ascending order, one a line; one element stands at depth 0. A spread value may hold line
// ends.
JsxFault readJsx(std::string_view text, const std::function<void(const JsxElement&)>& take);

}  // namespace velinor
