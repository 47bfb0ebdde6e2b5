// The text of an element tree as XML.
#pragma once

#include "base/text_sink.h"
#include "descriptors/element_tree.h"

namespace velinor {

// Writes the tree as an XML document: the declaration without an encoding, one line an element, one tab a
// level, empty-element tags for elements without children, each line ended by a line feed. Attributes come in
// ascending order of their keys. Bulk children write themselves in their place.
void toXmlText(const ElementList& elements, TextSink& text);

}  // namespace velinor
