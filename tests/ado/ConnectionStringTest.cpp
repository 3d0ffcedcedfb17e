// Connection strings: reading their parts, the provider's words, and that no text breaks the reader.
#include "ado/ConnectionString.h"
#include "TempDatabase.h"

#include <random>

using namespace ADODB;

namespace {

QString ValueIn(const char *text, const char *key)
{
    return AttributeValue(ParseConnectionString(QString::fromUtf8(text)), QString::fromUtf8(key));
}

TEST(ConnectionString, ReadsKeysBracesAndQuotes)
{
    EXPECT_EQ(ValueIn("Driver=SQLite;Database=/a/b.db", "DATABASE"), "/a/b.db");
    EXPECT_EQ(ValueIn(" driver = {PostgreSQL Unicode} ; UID = me ", "Driver"), "PostgreSQL Unicode");
    EXPECT_EQ(ValueIn(" driver = {PostgreSQL Unicode} ; UID = me ", "uid"), "me");
    EXPECT_EQ(ValueIn("PWD={a;b=c}}d};x=1", "PWD"), "a;b=c}d");
    EXPECT_EQ(ValueIn("PWD={a;b=c}}d};x=1", "x"), "1");
    EXPECT_EQ(ValueIn("PWD={never closed;x=1", "PWD"), "never closed;x=1");
    EXPECT_EQ(ValueIn("Extended Properties=\"DSN=a;UID=\"\"b\"\"\";y=2", "extended properties"), "DSN=a;UID=\"b\"");
    EXPECT_EQ(ValueIn("UID=first;UID=second", "UID"), "first");
    EXPECT_EQ(ValueIn("a=b=c", "a"), "b=c");
    EXPECT_EQ(ValueIn("lonely", "lonely"), "");
    EXPECT_TRUE(HasAttribute(ParseConnectionString(QStringLiteral("lonely;;")), QStringLiteral("LONELY")));
    EXPECT_TRUE(ParseConnectionString(QStringLiteral(" ;;; ")).empty());
}

TEST(ConnectionString, ProviderWordsAreTakenOff)
{
    const auto odbc = [](const char *text) { return OdbcString(QString::fromUtf8(text)); };
    EXPECT_EQ(odbc("DSN=a;UID=b"), "DSN=a;UID=b");
    EXPECT_EQ(odbc("Provider=MSDASQL;DSN=a;UID=b"), "DSN=a;UID=b");
    EXPECT_EQ(odbc("provider=msdasql.1;Persist Security Info=False;Data Source=books;User ID=me;Password=p;w"),
              "DSN=books;UID=me;PWD=p;w");
    EXPECT_EQ(odbc("Provider=MSDASQL;Extended Properties=\"Driver={X};Server=s;\";Initial Catalog=c"),
              "Driver={X};Server=s;DATABASE=c");
    EXPECT_EQ(odbc("Extended Properties=\"Driver=SQLite;Database=x.db\""), "Driver=SQLite;Database=x.db");
    EXPECT_EQ(odbc("Provider=MSDASQL;PWD={a;b}"), "PWD={a;b}");
    const auto error = ErrorOf([&] { odbc("Provider=Whatever;Data Source=x"); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number, adErrProviderNotFound);
    EXPECT_TRUE(error->Description.contains(QStringLiteral("Whatever is not installed")));
}

TEST(ConnectionString, ReplacesAnAttributeAndKeepsTheRestAsItWasWritten)
{
    const QString text = QStringLiteral("Driver={X y};UID=old;PWD={o;d};; Port = 1;uid=older");
    const QString changed = WithAttribute(WithAttribute(text, QStringLiteral("uid"), QStringLiteral("new")),
                                          QStringLiteral("PWD"), QStringLiteral("p;}w"));
    EXPECT_EQ(changed, "Driver={X y}; Port = 1;uid=new;PWD={p;}}w}");
    EXPECT_EQ(AttributeValue(ParseConnectionString(changed), QStringLiteral("pwd")), "p;}w");
    EXPECT_EQ(WithAttribute(QString(), QStringLiteral("UID"), QStringLiteral("me")), "UID=me");
}

TEST(ConnectionString, ABracedValueReadsBackAsItWas)
{
    std::mt19937 random(5);
    for (int round = 0; round < 5000; ++round) {
        QString value;
        for (unsigned i = random() % 8; i > 0; --i)
            value += QChar(u"ab{};=\" ,'\\\u0416"[random() % 12]);
        const QString text = QStringLiteral("x=1;PWD=") + BracedValue(value) + QStringLiteral(";y=2");
        const auto attributes = ParseConnectionString(text);
        EXPECT_EQ(AttributeValue(attributes, QStringLiteral("PWD")), value) << text.toStdString();
        EXPECT_EQ(AttributeValue(attributes, QStringLiteral("y")), "2") << text.toStdString();
    }
}

// PostgreSQL's driver decodes "%" and "+" of a bare password.
TEST(ConnectionString, APasswordThatIsPutInIsNotDecodedAndAWrittenOneStays)
{
    const auto with = [](const char *password) {
        return WithAttribute(QStringLiteral("DSN=d"), QStringLiteral("PWD"), QString::fromUtf8(password));
    };
    EXPECT_EQ(with("plain"), "DSN=d;PWD=plain");
    EXPECT_EQ(with("a%2Bb"), "DSN=d;PWD={a%2Bb}");
    EXPECT_EQ(with("+"), "DSN=d;PWD={+}");
    EXPECT_EQ(with("100%}"), "DSN=d;PWD={100%}}}");
    EXPECT_EQ(WithAttribute(QString(), QStringLiteral("UID"), QStringLiteral("a+b")), "UID=a+b");
    const auto odbc = [](const char *text) { return OdbcString(QString::fromUtf8(text)); };
    EXPECT_EQ(odbc("Provider=MSDASQL;Data Source=d;Password=a%2Bb"), "DSN=d;PWD=a%2Bb");
    EXPECT_EQ(odbc("Provider=MSDASQL;Data Source=d;Password={a%2Bb}"), "DSN=d;PWD={a%2Bb}");
    EXPECT_EQ(odbc("Provider=MSDASQL;Data Source=d;Password=\"a;%b\""), "DSN=d;PWD={a;%b}");
    EXPECT_EQ(odbc("Provider=MSDASQL;Data Source=d;Password=\"100%\""), "DSN=d;PWD={100%}");
    EXPECT_EQ(odbc("DSN=d;PWD=a%2Bb"), "DSN=d;PWD=a%2Bb");
}

TEST(ConnectionString, NoTextBreaksTheReader)
{
    std::mt19937 random(11);
    for (int round = 0; round < 20000; ++round) {
        QString text;
        for (unsigned i = random() % 30; i > 0; --i)
            text += QChar(u"aP=;{}\"[ \t\r\n\0\u0416\xD83D"[random() % 15]);
        qsizetype raw = 0;
        for (const Attribute &attribute : ParseConnectionString(text))
            raw += attribute.Raw.size();
        EXPECT_LE(raw, text.size());
        (void)ErrorOf([&] { (void)OdbcString(text); });
    }
}

TEST(ConnectionString, TheConnectionGivesItBackAsItWasGiven)
{
    TempDatabase database;
    const ConnectionPtr connection = Connection::Create();
    const QString given = QStringLiteral("Provider=MSDASQL;Driver={sqlite};Create=Yes;Database=") + database.File();
    connection->Open(given, QStringLiteral("me"), QStringLiteral("secret"));
    EXPECT_EQ(connection->ConnectionString(), given);
    EXPECT_EQ(connection->State(), adStateOpen);
    EXPECT_EQ(connection->Property(QStringLiteral("dbms name")).toString(), "SQLite");
}

} // namespace
