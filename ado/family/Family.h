#pragma once
// What one family of databases has of its own, in one object: how it reads names and texts, what tells its rows from
// each other, how it keeps transactions, what it answers, and what its catalogue is asked.
//
// Each family is one table in a folder of its own (ado/family/<name>), made once and never changed; any thread. A
// connection tells its family (Connection::Family), and whoever composes or reads a text for a server asks that object.
// Id is for tests and their tables of expectations: the program branches on what a family can, never on which it is.
// What is left out of a table is what a family that nobody knows is taken to be.
//
// Texts with %1, %2 ... are templates; a null text means that the family has no such thing.

#include "ado/Types.h"
#include <QByteArray>
#include <QSet>
#include <QString>
#include <span>
#include <vector>

namespace ADODB {

class Session;
struct ColumnInfo;

enum class DatabaseFamily
{
    Other, // nobody knows it
    SQLite,
    PostgreSQL,
    MySQL,
    SQLServer,
    Oracle
};

enum class Folding // of names without quotes
{
    Keeps,
    Lower,
    Upper
};

enum class Letters // past ASCII, in a name without quotes
{
    None,  // of the others only what surely is one
    Basic, // every character up to U+FFFF
    All
};

struct NameRules
{
    char16_t Open = 0, Close = 0; // the quotes that always work; 0: those that the driver tells
    bool Brackets = false;        // reads [name]
    bool DoublesBracket = false;  // "]" within is written twice
    const char16_t *Signs = u"";  // in a bare name, beside letters, digits and "_"
    const char16_t *FirstSigns = u"";
    bool DigitFirst = false; // may a digit open it, if it does not look like a number?
    bool UnderscoreFirst = true;
    Letters Foreign = Letters::None;
    Folding Bare = Folding::Keeps;
    bool NumberNotation = false;      // U&"\+00000a": a name by the numbers of its characters
    bool AfterCatalog = false;        // the catalogue stands before the name ...
    bool AfterSchema = true;          // ... and the schema
    bool DatabasesForSchemas = false; // what stands before a name is called a catalogue by its drivers
    const char *MainSchema = nullptr; // of objects whose row tells none
    QSet<QByteArray> Reserved = {};   // the words that are no bare names, in capitals
    // The first row of its answer tells where the plain name leads: catalogue and schema. %1 is the name as a literal.
    const char *Where = nullptr;
    bool WhereWantsQuotes = false; // that literal holds the name in quotes
};

enum class Backslash // in a text in quotes
{
    Unknown, // a server's settings decide, or nobody knows
    Plain,
    InEscapeTexts, // E'...' alone
    Escapes
};

struct TextRules
{
    const char *LiteralBegins = "'";
    Backslash InTexts = Backslash::Unknown;
    bool DoublesBackslash = false; // in the literals that are written here
    bool Backticks = false;        // `name`
    bool Subscripts = false;       // a[1] is no name
    bool DollarTexts = false;      // $tag$ ... $tag$
    bool BracketTexts = false;     // q'[ ... ]'
    bool HashComments = false;
    bool DashesWantBlank = false; // "5--3" is a number
    bool CommentsRun = false;     // what stands in "/*! */" and "/*M! */"
    bool NestedComments = false;
    bool ReturnEndsLine = false; // and so a comment behind "--"
    bool Top = false;            // SELECT TOP 5
    bool NeedsSemicolons = true; // between two statements
};

struct RowRules
{
    const char *EmptyRow = " DEFAULT VALUES"; // behind INSERT INTO t
    const char *RowId = nullptr;              // the column that each table has beside its own
    const char *NoRowIdWords = nullptr;       // what the server says where there is none (a view)
    const char *MadeByRowId = nullptr;        // the row just added: %1 its columns, %2 the table ...
    const char *MadeByKey = nullptr;          // ... %3 its one key column
    bool ZeroCountsOn = false;                // a key of 0 in an INSERT means the next number
    bool HaveHeirs = false;                   // rows of other tables may show in a table, past its key
    bool TellBehindViews = false;             // drivers tell the table behind a view, whose rows may be others
    int DecimalDigits = 0; // significant digits that every decimal keeps; 0: those that its column is declared with
    // What drivers tell of a decimal that was declared without any; it keeps all of them.
    int UnboundPrecision = 0, UnboundScale = 0;
    // The columns of a table's primary key, where the driver's catalogue does not find them.
    QString (*KeyQuery)(const QString &database, const QString &table) = nullptr;
    // That a column (%1) has the value that was read, bound to each "?"; "" where the server cannot compare it.
    QString (*Equality)(const ColumnInfo &column) = nullptr;
    bool (*CanReturn)(const QString &product, const QString &version) = nullptr; // INSERT ... RETURNING
    // How a column is asked for where its driver loses some of its values; null: by its name alone.
    QString (*Exact)(const ColumnInfo &column, const QString &name) = nullptr;
};

struct TransactionRules
{
    const char *Open = "SAVEPOINT brindlewick", *Keep = "RELEASE SAVEPOINT brindlewick",
               *TakeBack = "ROLLBACK TO SAVEPOINT brindlewick";
    // Its first cell is 1 inside of a transaction that a statement has begun.
    const char *Question = nullptr;
    const char *InsideWords = nullptr; // no question: a second BEGIN is refused with these words
    bool FailureEndsAll = false;       // the first statement that fails gives up the whole transaction
    bool DeadlockEndsAll = false;
    bool KeepsFailedCommit = false; // and it can be tried again
    bool CommitsWriteAll = false;   // each commit writes the file: many rows want one transaction
    const char *Warnings = nullptr; // asked behind a rollback that may have been ignored
    int IgnoredRollback = 0;        // the warning's number
    // Where kinds of tables ignore it: the first cell of this query's answer is 1 for a table that does not. The
    // database may be "": the current one.
    QString (*TakesBack)(const QString &database, const QString &table) = nullptr;
    const char *OneRow = nullptr; // and what behind an UPDATE or DELETE has it change one row at most
};

struct AnswerRules
{
    bool CancelLooksDone = false;      // a cancelled statement without rows may look as if it had come to its end
    std::vector<int> LostNumbers = {}; // native numbers by which the client's library says that the server is gone
};

// How a plan comes back from a server that is asked for it in its own words.
enum class PlanAnswer
{
    None,
    Steps,  // id, parent, detail: a row each step
    Tables, // a row each table, in the order of the join
    Json    // one text
};

struct PlanRules
{
    const char *Question = nullptr; // what stands in front of the statement
    PlanAnswer Answer = PlanAnswer::None;
};

struct CatalogueQuery;
struct Literal;
struct TypeName;
struct TypeRow;

struct CatalogueRules
{
    std::vector<std::span<const CatalogueQuery>> Queries = {};     // of a rowset in the order in which they are tried
    QString (*Complete)(QString text, Session &session) = nullptr; // of a query, what must be asked for first
    const CatalogueQuery *KeyTexts = nullptr; // of the tables with foreign keys, whose names stand in the text alone
    std::span<const Literal> Literals = {};
    const char *NotAtTheStart = nullptr;               // of a name without quotes
    std::span<const TypeRow> Types = {};               // where the catalogue lists none
    std::span<const TypeName> TypeNames = {};          // what it means otherwise than the others
    std::span<const TypeName> ContainedTypeNames = {}; // any word is a type, and goes by what it contains
    // Schema, name, whether the user may read it, whether the plain name leads to it; of every table.
    const char *Standing = nullptr;
};

struct Family
{
    DatabaseFamily Id = DatabaseFamily::Other;
    std::vector<const char *> Products = {}; // parts of the names by which its servers call themselves
    const char *Files = nullptr;             // the file chooser's filter, where a database is a file
    NameRules Names = {};
    TextRules Texts = {};
    RowRules Rows = {};
    TransactionRules Transactions = {};
    AnswerRules Answers = {};
    PlanRules Plans = {};
    CatalogueRules Catalogue = {};

    bool SameName(const QString &left, const QString &right) const; // as its catalogue spells them
    QString Folded(const QString &bareName) const;
    QString LiteralOf(const QString &text) const;
};

std::span<const Family *const> Families(); // those that are known here
const Family &FamilyOf(DatabaseFamily id);
const Family &FamilyOfProduct(const QString &product);
const Family &NoFamily(); // that of a server nobody knows

QSet<QByteArray> WordsOf(const char *text); // with one blank between two

} // namespace ADODB
