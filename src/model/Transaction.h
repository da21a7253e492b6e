#pragma once

#include "model/DataAccess.h"

namespace quillform {

/// Many changes of a database as one: dropped unless Commit is reached.
class Transaction {
public:
    explicit Transaction(Database& database) : database_(database) { database_.BeginTrans(); }
    ~Transaction() {
        if (isDone_) return;
        try {
            database_.Rollback();
        } catch (const RunTimeError&) {
            // The failure that led here is the one to tell; what isn't committed never reaches the file anyway.
        }
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void Commit() {
        database_.CommitTrans();
        isDone_ = true;
    }

private:
    Database& database_;
    bool isDone_ = false;
};

}  // namespace quillform
