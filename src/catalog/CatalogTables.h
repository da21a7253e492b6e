#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/DataAccess.h"

namespace quillform {

inline constexpr std::string_view catalogIndexTable = "Report - Index";
inline constexpr std::string_view catalogRelationTable = "Report - Relation";
inline constexpr std::string_view catalogLabelsTable = "Report - Labels";

/// `Function Code` of a catalog row; 0 in rows that are no formula.
enum class FunctionCode : std::int16_t {
    None = 0,
    Mid = 1,
    Right = 2,
    Left = 3,
    Sum = 4,
    Count = 5,
    Average = 6,
    StandardDeviation = 7,
    PopulationDeviation = 8,
};

/// One row of `Report - Index`: a thing that a report can show. Texts as stored, blanks included; a Null reads as
/// empty.
struct CatalogRow {
    std::int32_t id = 0;
    std::string field;
    std::string table;
    std::string text;
    std::int32_t defaultLength = 0;
    std::string mask;
    bool numeric = false;
    bool isTextDate = false;
    bool formulaFlag = false;
    std::string aliasName;
    std::int32_t functionCode = 0;  ///< a broken catalog may hold any number, so it isn't the enumeration
    std::string parameter1;
    std::string parameter2;
};

/// One row of `Report - Relation`.
struct CatalogRelation {
    std::string table1;
    std::string table2;
    std::string field1;
    std::string field2;
};

/// One consistent reading of the catalog for a run or a form: each table is read once, and look-ups are by number.
class Catalog {
public:
    /// Reads `Report - Index` and `Report - Relation`; RunTimeError of the data layer if one can't be read, as the
    /// first look-up of a run would meet it. A missing column reads as empty.
    static Catalog Read(Database& database);
    /// A catalog of the given rows.
    static Catalog Of(std::vector<CatalogRow> rows, std::vector<CatalogRelation> relations);

    /// The first row with this ID; null if there is none.
    const CatalogRow* Find(int id) const;
    /// The first relation between two tables in either order, names compared as the database compares texts
    /// (case-blind).
    const CatalogRelation* FindRelation(std::string_view left, std::string_view right) const;
    const std::vector<CatalogRow>& Rows() const { return rows_; }
    const std::vector<CatalogRelation>& Relations() const { return relations_; }

private:
    std::vector<CatalogRow> rows_;
    std::vector<CatalogRelation> relations_;
    std::map<int, std::size_t> byId_;
};

}  // namespace quillform
