#pragma once

#include <string>
#include <string_view>

#include "catalog/Answers.h"

namespace quillform {

// The answers file: UTF-8, one answer a line, any line ends, indented or not. Lines that begin with "#" and empty ones
// are passed over. The first other line is "quillform answers 1". Then, in any order but that a field stands below its
// table and an answer below its field or formula:
//
//   unlisted fields default|no|stop     tables and fields that the file doesn't name; "default" where it isn't said
//   unlisted links default|no|stop      pairs of tables
//   label sheets yes|no                 the common label sheets are added; "yes" where it isn't said
//   table [NAME]      no table [NAME]
//     field [NAME]    no field [NAME]
//       as text WIDTH                   a memo or GUID described as text
//       raw no                          no entry for the value itself
//       description TEXT
//       date yes                        a text that holds a date as digits
//       masks COUNT
//       mask MASK                       once for each mask
//       formula CHOICE                  as in the list: Sum(Field)
//         position, length, mask, alias, description TEXT
//   link [TABLE].[FIELD] = [TABLE].[FIELD]      no link [TABLE] [TABLE]
//
// A "]" in a name is doubled. A text stands in double quotes where it is empty or has blanks at its ends, and quotes
// inside are doubled then.

/// RunTimeError InvalidFileFormat with the file's name, the line's number and what is wrong with it.
Answers ParseAnswers(std::string_view text, std::string_view fileName);

/// The same answers as text. RunTimeError NotSupported for a name or reply with a control character in it, other
/// than a tab.
std::string AnswersText(const Answers& answers);

/// The failure of an answer: its file, its line (0: none) and `problem`, a sentence.
[[noreturn]] void FailAnswer(const Answers& answers, int line, std::string_view problem);

}  // namespace quillform
