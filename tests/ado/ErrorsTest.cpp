// The one list of the layer's own errors.
#include "ado/Error.h"
#include <QSet>
#include <gtest/gtest.h>

using namespace ADODB;

TEST(Errors, EachNameHasItsRowAndEachTextStandsOnce)
{
    QSet<QString> texts;
    for (const FaultRow &row : FaultRows()) {
        const QString text = QString::fromLatin1(row.Text);
        SCOPED_TRACE(row.Text);
        EXPECT_EQ(&RowOf(row.Name), &row);
        EXPECT_FALSE(texts.contains(text));
        texts.insert(text);
        const qsizetype state = qsizetype(qstrlen(row.SqlState));
        EXPECT_TRUE(state == 0 || state == 5) << row.SqlState;
        const Error error(row.Name);
        EXPECT_EQ(int(error.Name), int(row.Name));
        EXPECT_EQ(error.Number, int(row.Number));
        EXPECT_EQ(error.SQLState, QString::fromLatin1(row.SqlState));
    }
    EXPECT_GT(texts.size(), 30);
}

TEST(Errors, SayWhatTheyAreAbout)
{
    // A name may hold what looks like a place for the next one.
    const Error error(Fault::BadShape, {QStringLiteral("%2"), QStringLiteral("7"), QStringLiteral("100% of %1")});
    EXPECT_EQ(error.Description, u"The shape command is not understood at line %2, column 7: 100% of %1.");
    EXPECT_STREQ(error.what(), "The shape command is not understood at line %2, column 7: 100% of %1.");
    EXPECT_EQ(int(Error(adErrProviderFailed, QStringLiteral("their words")).Name), int(Fault::OfDriver));
}
