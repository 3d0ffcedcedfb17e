#include "samples/Sample.h"

#include "samples/SampleNames.h"
#include <cstdint>
#include <cstdio>
#include <sqlite3.h>

namespace {

// Decimals are declared with a type name that holds TEXT, so that SQLite keeps the digits and never makes a double of
// them.
constexpr const char *kTables = R"sql(
CREATE TABLE categories (
  CategoryID INTEGER PRIMARY KEY, CategoryName VARCHAR(30) NOT NULL UNIQUE, Description TEXT, Picture BLOB);
CREATE TABLE suppliers (
  SupplierID INTEGER PRIMARY KEY, CompanyName VARCHAR(60) NOT NULL, ContactName VARCHAR(60), City VARCHAR(40),
  Country VARCHAR(40), HomePage TEXT);
CREATE TABLE shippers (
  ShipperID INTEGER PRIMARY KEY, CompanyName VARCHAR(60) NOT NULL, Phone VARCHAR(24), CutOff TIME);
CREATE TABLE customers (
  CustomerID CHAR(6) PRIMARY KEY, CompanyName VARCHAR(60) NOT NULL, ContactName VARCHAR(60), City VARCHAR(40),
  Country VARCHAR(40), Phone VARCHAR(24), CreditLimit DECIMAL_TEXT(38,10), Active BOOLEAN NOT NULL, Since DATE);
CREATE TABLE employees (
  EmployeeID INTEGER PRIMARY KEY, Name VARCHAR(60) NOT NULL, Title VARCHAR(40), BirthDate DATE, HireDate DATE,
  ReportsTo INTEGER REFERENCES employees(EmployeeID), Badge BIGINT);
CREATE TABLE products (
  ProductID INTEGER PRIMARY KEY, ProductName VARCHAR(60) NOT NULL, SupplierID INTEGER REFERENCES suppliers(SupplierID),
  CategoryID INTEGER REFERENCES categories(CategoryID), UnitPrice DECIMAL_TEXT(19,4), UnitsInStock SMALLINT,
  Weight DOUBLE, Discontinued BOOLEAN NOT NULL DEFAULT 0);
CREATE TABLE orders (
  OrderID INTEGER PRIMARY KEY, CustomerID CHAR(6) REFERENCES customers(CustomerID),
  EmployeeID INTEGER REFERENCES employees(EmployeeID), ShipperID INTEGER REFERENCES shippers(ShipperID),
  PlacedAt TIMESTAMP NOT NULL, ShippedDate DATE, Freight DECIMAL_TEXT(19,4), Tracking BIGINT, Remark TEXT);
CREATE TABLE "order details" (
  OrderID INTEGER NOT NULL REFERENCES orders(OrderID), ProductID INTEGER NOT NULL REFERENCES products(ProductID),
  UnitPrice DECIMAL_TEXT(19,4) NOT NULL, Quantity SMALLINT NOT NULL CHECK (Quantity > 0), Discount REAL NOT NULL,
  PRIMARY KEY (OrderID, ProductID));
CREATE TABLE "buyer's ""own"" notes" (
  NoteID INTEGER PRIMARY KEY, CustomerID CHAR(6) REFERENCES customers(CustomerID), "written at" TIMESTAMP, Note TEXT);
)sql";

constexpr const char *kViews = R"sql(
CREATE INDEX orders_customer ON orders(CustomerID);
CREATE INDEX orders_placed ON orders(PlacedAt);
CREATE INDEX details_product ON "order details"(ProductID);
CREATE VIEW "customer orders" AS
  SELECT c.CustomerID, c.CompanyName, c.Country, o.OrderID, o.PlacedAt, o.ShippedDate
  FROM customers c JOIN orders o ON o.CustomerID = c.CustomerID;
CREATE VIEW "order totals" AS
  SELECT OrderID, count(*) AS Lines, sum(Quantity) AS Pieces,
         round(sum(UnitPrice * Quantity * (1 - Discount)), 2) AS Total
  FROM "order details" GROUP BY OrderID;
CREATE VIEW products_by_category AS
  SELECT g.CategoryName, p.ProductID, p.ProductName, p.UnitPrice, p.UnitsInStock
  FROM products p JOIN categories g ON g.CategoryID = p.CategoryID WHERE NOT p.Discontinued;
)sql";

// A small generator of its own: the same numbers on every machine.
class Dice
{
public:
    std::uint32_t Next()
    {
        m_state = m_state * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<std::uint32_t>(m_state >> 33);
    }
    int Below(int limit) { return static_cast<int>(Next() % static_cast<std::uint32_t>(limit)); }
    template <class List> auto &Of(const List &list) { return list[Next() % list.size()]; }

private:
    std::uint64_t m_state = 20260101;
};

class Database
{
public:
    explicit Database(const std::string &path)
    {
        if (sqlite3_open(path.c_str(), &m_handle) != SQLITE_OK) {
            const std::string words = sqlite3_errmsg(m_handle);
            sqlite3_close(m_handle); // there is one after a failure, too
            throw words;
        }
        Run("PRAGMA page_size=4096; PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF; BEGIN;");
    }
    ~Database() { sqlite3_close(m_handle); }
    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    void Check(int code)
    {
        if (code != SQLITE_OK && code != SQLITE_DONE && code != SQLITE_ROW)
            throw std::string(sqlite3_errmsg(m_handle));
    }
    void Run(const char *sql) { Check(sqlite3_exec(m_handle, sql, nullptr, nullptr, nullptr)); }
    sqlite3 *Handle() const { return m_handle; }

private:
    sqlite3 *m_handle = nullptr;
};

struct Null
{
};

class Insert
{
public:
    Insert(Database &database, const char *sql) : m_database(database)
    {
        m_database.Check(sqlite3_prepare_v2(database.Handle(), sql, -1, &m_statement, nullptr));
    }
    ~Insert() { sqlite3_finalize(m_statement); }
    Insert(const Insert &) = delete;
    Insert &operator=(const Insert &) = delete;

    template <class... Values> void Row(const Values &...values)
    {
        m_at = 0;
        (Bind(values), ...);
        m_database.Check(sqlite3_step(m_statement));
        sqlite3_reset(m_statement);
    }

private:
    void Bind(int value) { sqlite3_bind_int(m_statement, ++m_at, value); }
    void Bind(std::int64_t value) { sqlite3_bind_int64(m_statement, ++m_at, value); }
    void Bind(double value) { sqlite3_bind_double(m_statement, ++m_at, value); }
    void Bind(Null) { sqlite3_bind_null(m_statement, ++m_at); }
    void Bind(const char *value) { Bind(std::string(value)); }
    void Bind(const std::string &value)
    {
        sqlite3_bind_text(m_statement, ++m_at, value.data(), static_cast<int>(value.size()), SQLITE_TRANSIENT);
    }
    void Bind(const std::pair<bool, std::string> &value) // false: null
    {
        value.first ? Bind(value.second) : Bind(Null{});
    }
    void Bind(const std::basic_string<unsigned char> &bytes)
    {
        sqlite3_bind_blob(m_statement, ++m_at, bytes.data(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
    }

    Database &m_database;
    sqlite3_stmt *m_statement = nullptr;
    int m_at = 0;
};

template <class... Values> std::string Print(const char *format, Values... values)
{
    char text[128];
    const int length = std::snprintf(text, sizeof text, format, values...);
    return std::string(text, static_cast<size_t>(length));
}

std::string Day(Dice &dice, int firstYear, int years)
{
    const int year = firstYear + dice.Below(years), month = 1 + dice.Below(12), day = 1 + dice.Below(28);
    return Print("%04d-%02d-%02d", year, month, day);
}

std::string Moment(Dice &dice)
{
    const std::string day = Day(dice, 2019, 7);
    const int hour = dice.Below(24), minute = dice.Below(60), second = dice.Below(60), micro = dice.Below(1000000);
    return day + Print(" %02d:%02d:%02d.%06d", hour, minute, second, micro);
}

std::string Money(Dice &dice, int limit)
{
    const int whole = dice.Below(limit), part = dice.Below(10000);
    return Print("%d.%04d", whole, part);
}

std::string CustomerKey(int number)
{
    return Print("C%05d", number);
}

std::basic_string<unsigned char> Picture(Dice &dice, int side) // a bitmap of `side` times `side` coloured pixels
{
    const int size = 54 + side * side * 4;
    std::basic_string<unsigned char> bytes(static_cast<size_t>(size), 0);
    const auto put = [&](int at, int value) {
        for (int i = 0; i < 4; ++i)
            bytes[static_cast<size_t>(at) + static_cast<size_t>(i)] = static_cast<unsigned char>(value >> (8 * i));
    };
    bytes[0] = 'B', bytes[1] = 'M';
    put(2, size), put(10, 54), put(14, 40), put(18, side), put(22, side);
    bytes[26] = 1, bytes[28] = 32;
    const int colour = dice.Below(1 << 24);
    for (int i = 0; i < side * side; ++i)
        put(54 + i * 4, colour ^ (i * 65793));
    return bytes;
}

void FillSmallTables(Database &database, Dice &dice)
{
    Insert category(database, "INSERT INTO categories VALUES (?,?,?,?)");
    for (int i = 0; i < static_cast<int>(kCategoryNames.size()); ++i)
        category.Row(i + 1, kCategoryNames[static_cast<size_t>(i)], kCategoryTexts[static_cast<size_t>(i)],
                     Picture(dice, 8 + i));

    Insert supplier(database, "INSERT INTO suppliers VALUES (?,?,?,?,?,?)");
    for (int i = 1; i <= 30; ++i) {
        const SamplePlace &place = dice.Of(kPlaces);
        supplier.Row(i, dice.Of(kCompanyNames), dice.Of(kPersonNames), place.city, place.country,
                     std::pair(i % 3 != 0, i % 2 ? std::string() : Print("https://supplier%d.example/#home", i)));
    }

    Insert shipper(database, "INSERT INTO shippers VALUES (?,?,?,?)");
    shipper.Row(1, "Fjord Couriers", "+47 55 00 00 01", "17:30:00");
    shipper.Row(2, "Stargate Parcels", Null{}, "23:59:59.999999");
    shipper.Row(3, "快递公司", "", "00:00:00.000001");

    Insert employee(database, "INSERT INTO employees VALUES (?,?,?,?,?,?,?)");
    for (int i = 1; i <= 36; ++i) {
        const std::string born = Day(dice, 1960, 40), hired = Day(dice, 2005, 18);
        const std::int64_t badge = 9007199254740992LL + dice.Below(1000000); // past what a double holds
        const char *title = i == 1 ? "Director" : i < 6 ? "Manager" : "Sales";
        if (i == 1)
            employee.Row(i, kPersonNames[static_cast<size_t>(i - 1)], title, born, hired, Null{}, badge);
        else
            employee.Row(i, kPersonNames[static_cast<size_t>(i - 1)], title, born, hired, i < 6 ? 1 : 2 + i % 4, badge);
    }
}

void FillCustomers(Database &database, Dice &dice, int count)
{
    Insert customer(database, "INSERT INTO customers VALUES (?,?,?,?,?,?,?,?,?)");
    for (int i = 1; i <= count; ++i) {
        const SamplePlace &place = dice.Of(kPlaces);
        const char *company = kCompanyNames[static_cast<size_t>(i) % kCompanyNames.size()];
        const std::string name = i <= static_cast<int>(kCompanyNames.size()) ? company : Print("%s %d", company, i);
        const int high = dice.Below(1000000), low = dice.Below(1000000);
        customer.Row(CustomerKey(i), name, std::pair(i % 11 != 0, std::string(dice.Of(kPersonNames))), place.city,
                     place.country, std::pair(i % 5 != 0, i % 7 ? Print("+%d %06d", 1 + i % 98, low) : std::string()),
                     std::pair(i % 13 != 0, Print("%d%06d000000000000001.%010d", 1 + high, low, low)), i % 9 ? 1 : 0,
                     Day(dice, 1999, 25));
    }
    Insert note(database, R"(INSERT INTO "buyer's ""own"" notes" VALUES (?,?,?,?))");
    for (int i = 1; i <= 60; ++i)
        note.Row(i, CustomerKey(1 + dice.Below(count)), Moment(dice), dice.Of(kRemarks));
}

void FillProducts(Database &database, Dice &dice, int count)
{
    Insert product(database, "INSERT INTO products VALUES (?,?,?,?,?,?,?,?)");
    for (int i = 1; i <= count; ++i) {
        const int kind = i % static_cast<int>(kProductNames.size());
        const std::string name = Print("%s No. %d", kProductNames[static_cast<size_t>(kind)], i);
        product.Row(i, name, 1 + dice.Below(30), 1 + (kind / 4) % 8, Money(dice, 90), dice.Below(400),
                    dice.Below(100000) / 1024.0, i % 17 == 0 ? 1 : 0);
    }
}

void FillOrders(Database &database, Dice &dice, const SampleSize &size)
{
    Insert order(database, "INSERT INTO orders VALUES (?,?,?,?,?,?,?,?,?)");
    Insert line(database, R"(INSERT INTO "order details" VALUES (?,?,?,?,?))");
    for (int i = 1; i <= size.orders; ++i) {
        const int number = 10000 + i;
        const std::string placed = Moment(dice);
        const std::int64_t tracking = (std::int64_t{1} << 62) + std::int64_t{dice.Below(1 << 30)} * 7919 + i;
        const int placedDay = std::stoi(placed.substr(8, 2));
        const std::string shipped = placed.substr(0, 8) + Print("%02d", placedDay + dice.Below(29 - placedDay));
        order.Row(number, CustomerKey(1 + dice.Below(size.customers)), 1 + dice.Below(36), 1 + dice.Below(3), placed,
                  std::pair(i % 8 != 0, shipped), Money(dice, 200), tracking,
                  std::pair(i % 3 == 0, std::string(dice.Of(kRemarks))));
        const int lines = 1 + dice.Below(5) * 9 / 10 + (i % 5 == 0 ? 1 : 0);
        int productID = dice.Below(size.products);
        for (int k = 0; k < lines; ++k) {
            line.Row(number, 1 + productID, Money(dice, 90), 1 + dice.Below(40), dice.Below(6) * 0.05);
            productID = (productID + 7) % size.products;
        }
    }
}

} // namespace

std::string MakeSample(const std::string &path, const SampleSize &size)
{
    const std::string fresh = path + ".new";
    std::remove(fresh.c_str());
    try {
        Database database(fresh);
        Dice dice;
        database.Run(kTables);
        FillSmallTables(database, dice);
        FillCustomers(database, dice, size.customers);
        FillProducts(database, dice, size.products);
        FillOrders(database, dice, size);
        database.Run(kViews);
        database.Run("COMMIT; PRAGMA foreign_key_check;");
    } catch (const std::string &words) {
        std::remove(fresh.c_str());
        return words;
    }
    if (std::rename(fresh.c_str(), path.c_str()) != 0)
        return "cannot rename " + fresh;
    return {};
}
