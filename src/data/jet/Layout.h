#pragma once

#include <cstddef>
#include <cstdint>

#include "data/jet/JetStorage.h"

namespace quillform::jet {

/// Everything that differs between the two formats, in bytes and byte offsets; docs/mdb-format.md has the tables.
struct Layout {
    Format format;
    std::size_t pageSize;
    std::size_t maxPages;  ///< of one file
    std::size_t maxRow;
    std::size_t mapRow;           ///< length of a usage-map row
    std::size_t maskedBytes;      ///< of the header, from 0x18
    std::size_t dataCount;        ///< data page: number of slots; the directory follows
    std::size_t countWidth;       ///< rows: width of counts and offsets
    std::size_t maxLongPiece;     ///< payload of one long-value row
    std::size_t maxInlineLong;    ///< longest long value that is kept in the row
    std::size_t textUnit;         ///< bytes per character
    std::size_t maxSystemBinary;  ///< length of BINARY columns of the system tables

    // Definition header
    std::size_t defRows, defAutoNumber, defKind, defMaxColumns, defVariables, defColumns, defIndexes, defTrees;
    std::size_t defOwnedMap, defFreeMap, defEnd;
    std::size_t treeCounts;  ///< size of the counts per physical index

    // Column descriptor
    std::size_t columnSize, columnNumber, columnVariable, columnOrdinal, columnSort, columnCodePage, columnPrecision;
    std::size_t columnFlags, columnFixed, columnLength;

    // Physical index block, then logical index block
    std::size_t treeSize, treeColumns, treeMap, treeRoot, treeFlags;
    std::size_t indexSize, indexNumber;  ///< the other fields follow indexNumber without gaps

    // Index page
    std::size_t nodePrevious, nodeNext, nodeTail, nodePrefix, nodePrefixWidth, nodeLevel, nodeBitmap, nodeEntries;
    std::size_t nodeFill;  ///< entry bytes up to which a rebuilt page is packed
};

inline constexpr Layout jet3Layout = {
    .format = Format::Jet3,
    .pageSize = 2048,
    .maxPages = 1u << 19,
    .maxRow = 2012,
    .mapRow = 133,
    .maskedBytes = 126,
    .dataCount = 8,
    .countWidth = 1,
    .maxLongPiece = 2032,
    .maxInlineLong = 32,
    .textUnit = 1,
    .maxSystemBinary = 255,
    .defRows = 0x0C,
    .defAutoNumber = 0x10,
    .defKind = 0x14,
    .defMaxColumns = 0x15,
    .defVariables = 0x17,
    .defColumns = 0x19,
    .defIndexes = 0x1B,
    .defTrees = 0x1F,
    .defOwnedMap = 0x23,
    .defFreeMap = 0x27,
    .defEnd = 0x2B,
    .treeCounts = 8,
    .columnSize = 18,
    .columnNumber = 1,
    .columnVariable = 3,
    .columnOrdinal = 5,
    .columnSort = 9,
    .columnCodePage = 0xB,
    .columnPrecision = 0xB,
    .columnFlags = 0xD,
    .columnFixed = 0xE,
    .columnLength = 0x10,
    .treeSize = 39,
    .treeColumns = 0,
    .treeMap = 0x1E,
    .treeRoot = 0x22,
    .treeFlags = 0x26,
    .indexSize = 20,
    .indexNumber = 0,
    .nodePrevious = 8,
    .nodeNext = 0xC,
    .nodeTail = 0x10,
    .nodePrefix = 0x14,
    .nodePrefixWidth = 1,
    .nodeLevel = 0x15,
    .nodeBitmap = 0x16,
    .nodeEntries = 0xF8,
    .nodeFill = 1800,
};

inline constexpr Layout jet4Layout = {
    .format = Format::Jet4,
    .pageSize = 4096,
    .maxPages = 1u << 19,
    .maxRow = 4060,
    .mapRow = 69,
    .maskedBytes = 128,
    .dataCount = 0xC,
    .countWidth = 2,
    .maxLongPiece = 4076,
    .maxInlineLong = 64,
    .textUnit = 2,
    .maxSystemBinary = 510,
    .defRows = 0x10,
    .defAutoNumber = 0x14,
    .defKind = 0x28,
    .defMaxColumns = 0x29,
    .defVariables = 0x2B,
    .defColumns = 0x2D,
    .defIndexes = 0x2F,
    .defTrees = 0x33,
    .defOwnedMap = 0x37,
    .defFreeMap = 0x3B,
    .defEnd = 0x3F,
    .treeCounts = 12,
    .columnSize = 25,
    .columnNumber = 5,
    .columnVariable = 7,
    .columnOrdinal = 9,
    .columnSort = 0xB,
    .columnCodePage = 0,
    .columnPrecision = 0xB,
    .columnFlags = 0xF,
    .columnFixed = 0x15,
    .columnLength = 0x17,
    .treeSize = 52,
    .treeColumns = 4,
    .treeMap = 0x22,
    .treeRoot = 0x26,
    .treeFlags = 0x2E,
    .indexSize = 28,
    .indexNumber = 4,
    .nodePrevious = 0xC,
    .nodeNext = 0x10,
    .nodeTail = 0x14,
    .nodePrefix = 0x18,
    .nodePrefixWidth = 2,
    .nodeLevel = 0x1A,
    .nodeBitmap = 0x1B,
    .nodeEntries = 0x1E0,
    .nodeFill = 3616,
};

// The same in both formats.
inline constexpr std::uint8_t dataPage = 1, definitionPage = 2, innerNode = 3, leafNode = 4, bitmapPage = 5;
inline constexpr std::uint16_t slotMoved = 0x4000, slotTarget = 0x8000, slotDeleted = 0xC000, slotOffset = 0x1FFF;
inline constexpr std::uint32_t longValueOwner = 0x4C41564C;  ///< "LVAL" where the owner of a data page stands
inline constexpr std::uint32_t definitionMark = 1625, treeMark = 1923;
inline constexpr std::uint32_t objectsTable = 2, permissionsTable = 3, queriesTable = 4, relationsTable = 5;
inline constexpr std::uint32_t globalMap = 0x100;  ///< row pointer of the map of free pages

inline const Layout& LayoutOf(Format format) { return format == Format::Jet3 ? jet3Layout : jet4Layout; }

}  // namespace quillform::jet
