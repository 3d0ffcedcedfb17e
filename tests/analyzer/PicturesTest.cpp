// The generators' windows wear the program's look. With BRINDLEWICK_GALLERY set to a folder the pictures are kept
// there.
#include "AnalyzerFixture.h"
#include "analyzer/frmCode.h"
#include "analyzer/frmGetSQLStructure.h"
#include "analyzer/frmScriptMask.h"
#include "analyzer/frmTextManipulation.h"
#include "controls/Skin.h"
#include "sqltext/modTemplates.h"
#include <QDir>

namespace {

void Look(QWidget &window, const char *name)
{
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    const QImage picture = window.grab().toImage();
    qint64 skinned = 0, foreign = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            skinned += pixel == SkinColour(SkinRole::Form).rgb() || pixel == SkinColour(SkinRole::Editor).rgb();
            foreign += qRed(pixel) > 235 && qGreen(pixel) > 235 && qBlue(pixel) > 235;
        }
    const qint64 all = qint64(picture.width()) * picture.height();
    EXPECT_GT(skinned, all / 2) << name;
    EXPECT_LT(foreign, all / 20) << name;
    if (const QString folder = qEnvironmentVariable("BRINDLEWICK_GALLERY"); !folder.isEmpty()) {
        EXPECT_TRUE(picture.save(QDir(folder).filePath(QString::fromLatin1(name) + QStringLiteral(".png"))));
    }
}

} // namespace

TEST_F(Analyzer, TheGeneratorsWindowsWearTheSkin)
{
    frmGetSQLStructure ask;
    Look(ask, "frmGetSQLStructure");
    frmCode code;
    code.setAttribute(Qt::WA_DeleteOnClose, false);
    code.MakeVBString(QStringLiteral("select name, city\r\nfrom customers\r\nwhere id > 7"));
    Look(code, "frmCode");
    frmScriptMask mask;
    mask.RefreshForm(QStringLiteral("customers"));
    mask.Run();
    Look(mask, "frmScriptMask");
    frmTextManipulation page;
    page.setAttribute(Qt::WA_DeleteOnClose, false);
    page.SetText(GenerateScriptPage(QStringLiteral("Driver=SQLite;Database=sample.sqlite"),
                                    QStringLiteral("select * from customers")));
    Look(page, "frmTextManipulation");
}
