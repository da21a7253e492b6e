#pragma once

#include <string>

#include "richtext/Document.h"

namespace quillform::richtext {

/// The text of a document without its looks: each paragraph ends with '\n', each row of a table likewise, with '\t'
/// between its cells, or '\n' where one of them has several paragraphs; '\f' stands for a page break.
std::string PlainText(const Document& document);

}  // namespace quillform::richtext
