#pragma once

#include <string>
#include <vector>

#include "model/Layout.h"
#include "model/TextMeasure.h"
#include "model/UserInterface.h"
#include "persistence/LayoutFile.h"

namespace quillform::cli {

/// Loads a layout for a verb and gives the lines that weren't read as they are meant. RunTimeError FileNotFound if the
/// file isn't there or can't be read.
std::vector<LayoutProblem> LoadForVerb(const std::string& file, Layout& layout, TextMeasure& measure,
                                       UserInterface& user);

/// Adds the conditions of a query file to a layout's. RunTimeError FileNotFound likewise.
void AddQueryFile(const std::string& file, Layout& layout);

}  // namespace quillform::cli
