#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "data/jet/PageFile.h"
#include "data/jet/RowForm.h"
#include "platform/Value.h"

namespace quillform::jet {

/// Takes values out of stored rows, one row at a time, each column when it is asked for. docs/mdb-format.md, "Rows".
class RowDecoder {
public:
    RowDecoder(const PageFile& file, const RowForm& form);

    /// `row` must live until the next SetRow.
    void SetRow(Bytes row) {
        row_ = row;
        isParsed_ = false;
    }
    /// Valid until the next SetRow. Damaged if the row isn't what it claims.
    ValueView Value(int column) const;
    /// The stored bytes of the column: nothing for Null, the 12-byte head with what follows for a long value.
    std::optional<Bytes> Stored(int column) const;

private:
    struct Room {  // what the views of one column point into
        std::string text{};
        std::string bytes{};
        PageRef pin{};
    };

    void Parse() const;
    void ParseTrailer(std::size_t end) const;
    void ParseJet3Offsets(std::size_t countAt) const;
    Bytes Variable(std::size_t index) const;
    bool HasBit(const Column& column) const;
    ValueView Decode(const Column& column, Bytes bytes, Room& room) const;
    ValueView DecodeText(Bytes bytes, Room& room) const;

    const PageFile& file_;
    const RowForm& form_;
    Bytes row_{};
    mutable bool isParsed_ = false;
    mutable std::size_t columnCount_ = 0;
    mutable std::size_t variableCount_ = 0;
    mutable std::size_t maskAt_ = 0;
    mutable std::size_t dataEnd_ = 0;                   // where fixed and variable data end at the latest
    mutable std::array<std::uint16_t, 257> offsets_{};  // Jet 3: of the variable columns, then their end
    mutable std::vector<Room> rooms_;
};

}  // namespace quillform::jet
