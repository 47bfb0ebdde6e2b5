// The text form of index.jsx:
//
//   <name
//   	key=value
//   	{...{ value }}>
//   	<child>
//   	</child>
//   </name>
#pragma once

#include "base/text_sink.h"
#include "descriptors/element_tree.h"

namespace velinor {

// Writes `elements` as markup, the outermost indented by `depth` tabs. Keys carry their own "="; the key
// "..." is a spread. Values are written as they are. Text goes out in pieces, since the indentation of a deep
// tree is longer than the tree itself.
void renderJsx(const ElementList& elements, int depth, TextSink& sink);

}  // namespace velinor
