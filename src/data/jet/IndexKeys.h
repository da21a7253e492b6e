#pragma once

#include <string>
#include <vector>

#include "data/collation/IndexText.h"
#include "data/jet/Header.h"
#include "data/jet/TableDefinition.h"
#include "platform/Value.h"

namespace quillform::jet {

/// Makes the keys of one tree out of the values of rows. docs/mdb-format.md, "Index keys".
class KeyMaker {
public:
    enum class Nulls { None, Some, All };

    KeyMaker(const TableDefinition& table, const Tree& tree, const Header& header);

    /// Whether the order of every text column of the tree is one that we know. Without it no key can be made.
    bool IsOrderKnown() const { return isOrderKnown_; }

    /// Overwrites `key` with the key of a row; `row.Value(position)` gives its values.
    template <typename Row>
    Nulls Make(const Row& row, std::string& key) const {
        key.clear();
        std::size_t nulls = 0;
        for (const Part& part : parts_) {
            ValueView value = row.Value(part.position);
            if (value.IsNull() && part.column.type == ColumnType::Boolean) value.kind = ValueKind::Boolean;
            nulls += value.IsNull() ? 1 : 0;
            Append(part, value, key);
        }
        return nulls == 0 ? Nulls::None : nulls == parts_.size() ? Nulls::All : Nulls::Some;
    }

private:
    struct Part {
        int position;
        Column column;
        bool descending;
    };

    void Append(const Part& part, const ValueView& value, std::string& key) const;
    void AppendAscending(const Column& column, const ValueView& value, std::string& key) const;
    void AppendText(const ValueView& value, std::string& key) const;

    Format format_;
    collation::PairedLetters pairs_;
    std::vector<Part> parts_{};
    bool isOrderKnown_ = true;
};

}  // namespace quillform::jet
