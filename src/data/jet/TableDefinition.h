#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "data/jet/PageFile.h"

namespace quillform::jet {

/// Column types as stored.
enum class ColumnType : std::uint8_t {
    Boolean = 1,
    Byte = 2,
    Integer = 3,
    Long = 4,
    Money = 5,
    Single = 6,
    Double = 7,
    DateTime = 8,
    Binary = 9,
    Text = 10,
    Ole = 11,
    Memo = 12,
    Guid = 15,
    Numeric = 16,
};

/// One column as its descriptor has it. docs/mdb-format.md, "Table definition".
struct Column {
    static constexpr std::uint8_t fixedFlag = 0x01, updatableFlag = 0x02, autoNumberFlag = 0x04, systemFlag = 0x10;
    static constexpr std::uint8_t accountFlag = 0x20, autoGuidFlag = 0x40;
    static constexpr std::uint8_t compressFlag = 0x01;  // of the extended flags

    std::string name{};
    ColumnType type = ColumnType::Text;
    std::uint16_t number = 0;    ///< bit in the null mask
    std::uint16_t variable = 0;  ///< place among the variable columns
    std::uint16_t ordinal = 0;
    std::uint8_t flags = 0;
    std::uint8_t extendedFlags = 0;
    std::uint16_t fixedOffset = 0;
    std::uint16_t length = 0;  ///< bytes
    std::uint8_t precision = 0;
    std::uint8_t scale = 0;
    std::uint16_t sortOrder = 0;
    std::uint8_t sortVersion = 0;
    std::uint16_t codePage = 0;  ///< Jet 3
    RowPointer ownedMap{};       ///< of its long values
    RowPointer freeMap{};

    bool IsFixed() const { return (flags & fixedFlag) != 0; }
    bool IsAutoNumber() const { return type == ColumnType::Long && (flags & autoNumberFlag) != 0; }
    bool IsAutoGuid() const { return type == ColumnType::Guid && (flags & autoGuidFlag) != 0; }
    bool IsLong() const { return type == ColumnType::Memo || type == ColumnType::Ole; }
};

/// One B-tree: a physical index.
struct Tree {
    struct Part {
        std::uint16_t column = 0;  ///< column number
        bool descending = false;
    };
    static constexpr std::uint8_t uniqueFlag = 0x01, ignoreNullsFlag = 0x02, requiredFlag = 0x08, jet4Flag = 0x80;

    std::vector<Part> parts{};
    RowPointer map{};
    std::uint32_t root = 0;
    std::uint8_t flags = 0;
    std::uint32_t entries = 0;       ///< as last counted
    std::uint32_t distinctKeys = 0;  ///< as last counted

    bool IsUnique() const { return (flags & uniqueFlag) != 0; }
    bool IgnoresNulls() const { return (flags & ignoreNullsFlag) != 0; }
    bool IsRequired() const { return (flags & requiredFlag) != 0; }
};

/// One index by name: a role of a tree.
struct NamedIndex {
    enum class Kind : std::uint8_t { Ordinary = 0, Primary = 1, Foreign = 2 };
    std::string name{};
    std::uint32_t number = 0;
    std::uint32_t tree = 0;
    std::uint8_t role = 0;
    std::uint32_t otherIndex = 0xFFFFFFFF;
    std::uint32_t otherTable = 0;
    std::uint8_t cascadeUpdates = 4;
    std::uint8_t cascadeDeletes = 4;
    Kind kind = Kind::Ordinary;
};

/// What the definition pages of one table say. docs/mdb-format.md, "Table definition".
struct TableDefinition {
    std::uint32_t page = 0;
    std::uint32_t rows = 0;  ///< may be wrong
    std::int32_t lastAutoNumber = 0;
    bool isSystem = false;
    std::uint16_t maxColumns = 0;     ///< highest column number + 1
    std::uint16_t variableSlots = 0;  ///< deleted ones included
    RowPointer ownedMap{};
    RowPointer freeMap{};
    std::vector<Column> columns{};  ///< in display order
    std::vector<Tree> trees{};
    std::vector<NamedIndex> indexes{};

    /// Position of the column with this number; -1 if there is none.
    int FindNumber(std::uint16_t number) const;
    int FindName(std::string_view name) const;
};

TableDefinition ReadTableDefinition(const PageFile& file, std::uint32_t page);
/// The pages of the definition, first page first.
std::vector<std::uint32_t> DefinitionPages(const PageFile& file, std::uint32_t page);

}  // namespace quillform::jet
