#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace quillform {

/// Error numbers that the program raises or tests for. The values are the platform's and the database engine's own
/// published numbers, because the error log and the error handler show them to the user.
enum class ErrorNumber : int {
    Overflow = 6,
    SubscriptOutOfRange = 9,
    TypeMismatch = 13,
    InvalidProcedureCall = 5,
    OutOfMemory = 7,
    DivisionByZero = 11,
    BadFileName = 52,
    FileNotFound = 53,
    BadFileMode = 54,
    DeviceIo = 57,
    DiskFull = 61,
    PermissionDenied = 70,
    PathNotFound = 76,
    ObjectNotSet = 91,
    InvalidUseOfNull = 94,
    InvalidFileFormat = 321,
    ObjectDoesNotExist = 340,
    PrinterFailed = 482,
    PrinterInformation = 484,
    DialogCancelled = 32755,
    NoCurrentRecord = 3021,
    DuplicateKey = 3022,
    InvalidArgument = 3001,
    TableExists = 3010,
    TableNotFound = 3011,
    FileMissing = 3024,
    DiskError = 3026,
    ReadOnly = 3027,
    CannotOpenExclusive = 3045,
    Locked = 3260,
    TooFewParameters = 3061,
    DuplicateTarget = 3063,
    SameTableTwice = 3081,
    DistinctOrder = 3093,
    NestedAggregate = 3095,
    AggregateInOrderBy = 3097,
    AggregateInGroupBy = 3098,
    AggregateInJoin = 3099,
    CannotSort = 3117,
    InvalidName = 3125,
    UnknownTargetField = 3127,
    InvalidStatement = 3129,
    SyntaxInGroupBy = 3132,
    SyntaxInHaving = 3133,
    SyntaxInInsert = 3134,
    SyntaxInOrderBy = 3138,
    SyntaxInUpdate = 3144,
    SyntaxInWhere = 3145,
    TooManyFields = 3190,
    FieldDefinedTwice = 3191,
    SubselectColumns = 3306,
    UnionColumns = 3307,
    ValueCount = 3346,
    SyntaxInExpression = 3075,
    SyntaxInFrom = 3131,
    InputTableNotFound = 3078,
    UnknownFunction = 3085,
    AmbiguousField = 3079,
    AggregateInWhere = 3096,
    NotPartOfAggregate = 3122,
    DataTypeMismatch = 3464,
    JoinNotSupported = 3296,
    JoinSyntax = 3135,
    SyntaxError = 3141,
    NoFieldDefined = 3264,
    ItemNotFound = 3265,
    ValueTooLong = 3163,
    FieldRequired = 3314,
    UnrecognizedFormat = 3343,
    PasswordRequired = 3031,
    NotSupported = 3251,
    NoPermission = 3051,
    QueryTooComplex = 3360,
};

/// A failure that travels up to whoever can tell the user. `what()` is one whole sentence that names the cause.
class RunTimeError : public std::runtime_error {
public:
    RunTimeError(ErrorNumber number, const std::string& description)
        : std::runtime_error(description), number_(number) {}

    ErrorNumber Number() const { return number_; }

private:
    ErrorNumber number_;
};

}  // namespace quillform
