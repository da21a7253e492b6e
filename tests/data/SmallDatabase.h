#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "ScratchFolder.h"
#include "data/Engine.h"
#include "model/DataAccess.h"

namespace quillform::data {

Field MakeField(const char* name, FieldType type, int size = 0);
TableDef MakeTable(const char* name, std::vector<Field> fields);

/// Puts a row of texts into a dynaset; "-" is Null.
void AddRow(Recordset& rows, const std::vector<const char*>& texts);

/// Members (with a Null town and a Null fee), Towns and Payments: small, and with every trap in it.
void FillSmall(Database& database);

/// All rows as "a|b / c|d"; Null is "-".
std::string Dump(Recordset& rows);
std::string Dump(Database& database, std::string_view statement);

/// Number of the error that the statement raises when it is opened; 0 where it opens.
int ErrorOf(Database& database, std::string_view statement);

}  // namespace quillform::data
