// The worked cases of the result window, through the window itself.
#include "controls/LongTextBox.h"
#include "controls/StatusBar.h"
#include "controls/TabStrip.h"
#include "tests/support/ExpectCases.h"
#include "tests/views/Hirarchy.h"
#include "views/GridCells.h"
#include "views/GridText.h"
#include <QApplication>
#include <QClipboard>
#include <QJsonArray>

namespace {

class HirarchyCases : public Hirarchy
{
protected:
    void Fill(const QJsonObject &args)
    {
        const QJsonArray rows = args[u"cells"].toArray();
        window.mfg->ClearStructure();
        window.mfg->SetRows(rows.size());
        window.mfg->SetCols(int(rows[0].toArray().size()));
        for (qsizetype row = 0; row < rows.size(); ++row)
            for (qsizetype col = 0; col < rows[row].toArray().size(); ++col)
                window.mfg->SetTextMatrix(row, int(col), rows[row].toArray()[col].toString());
    }
    void FillAndSelect(const QJsonObject &args)
    {
        Fill(args);
        window.mfg->Select(args[u"row"].toInt(), args[u"col"].toInt(), args[u"row_sel"].toInt(),
                           args[u"col_sel"].toInt());
    }
    // What the third tab says after a statistic; the division error of no number where it says nothing.
    QJsonValue Said(const QJsonObject &args, void (frmHirarchy::*command)())
    {
        FillAndSelect(args);
        window.txtData->setPlainText(QString());
        (window.*command)();
        const QString text = window.txtData->toPlainText();
        return text.isEmpty() ? QJsonValue(QJsonObject{{QStringLiteral("error"), 11}}) : QJsonValue(text);
    }
    QJsonValue Marked(const QJsonObject &args, void (frmHirarchy::*command)())
    {
        FillAndSelect(args);
        (window.*command)();
        if (window.mfg->CellBackColor() != QColor(255, 255, 0))
            return {};
        return QJsonArray{window.mfg->Row(), window.mfg->Col()};
    }
    void Expect(const char *op, const std::function<QJsonValue(const QJsonObject &)> &run)
    {
        ExpectCases(op, run, cases::kVisual, 1e-12);
    }
};

TEST_F(HirarchyCases, Statistics)
{
    Expect("stat_sum", [&](const QJsonObject &args) { return Said(args, &frmHirarchy::mnuSum_Click); });
    Expect("stat_avg", [&](const QJsonObject &args) { return Said(args, &frmHirarchy::mnuAvg_Click); });
    Expect("stat_max", [&](const QJsonObject &args) { return Marked(args, &frmHirarchy::mnuMax_Click); });
    Expect("stat_min", [&](const QJsonObject &args) { return Marked(args, &frmHirarchy::mnuMin_Click); });
}

TEST_F(HirarchyCases, Copies)
{
    Expect("copy_block", [&](const QJsonObject &args) {
        FillAndSelect(args);
        window.ts->Select(1);
        window.mnuCopy();
        return QJsonValue(QApplication::clipboard()->text());
    });
    Expect("copy_text", [&](const QJsonObject &args) {
        const QString text = args[u"text"].toString(), selected = args[u"selected"].toString();
        window.txtData->setPlainText(text);
        QTextCursor cursor = window.txtData->textCursor();
        cursor.setPosition(int(text.indexOf(selected)));
        cursor.setPosition(int(text.indexOf(selected) + selected.size()), QTextCursor::KeepAnchor);
        window.txtData->setTextCursor(cursor);
        window.ts->Select(3);
        window.mnuCopy();
        return QJsonValue(QApplication::clipboard()->text());
    });
}

TEST_F(HirarchyCases, Files)
{
    Expect("save_csv", [&](const QJsonObject &args) {
        Fill(args);
        EXPECT_TRUE(window.SaveFile(folder.filePath(QStringLiteral("a.csv"))));
        return QJsonValue(QString::fromUtf8(Bytes(QStringLiteral("a.csv"))));
    });
    Expect("save_html", [&](const QJsonObject &args) {
        Fill(args);
        window.SetCaption(args[u"caption"].toString());
        window.SB->SetPanelText(1, args[u"panel1"].toString());
        EXPECT_TRUE(window.SaveHTMLFile(folder.filePath(QStringLiteral("a.htm"))));
        return QJsonValue(QString::fromUtf8(Bytes(QStringLiteral("a.htm"))));
    });
    Expect("save_kind", [](const QJsonObject &args) {
        return QJsonValue(grid::WantsHtml(args[u"name"].toString()) ? QStringLiteral("html") : QStringLiteral("csv"));
    });
}

TEST_F(HirarchyCases, Finds)
{
    Expect("find_hits", [&](const QJsonObject &args) {
        Fill(args);
        const grid::SearchFor what{args[u"criteria"].toString(), args[u"exact"].toBool(),
                                   args[u"case_sensitive"].toBool()};
        const GridCells cells(window.mfg);
        QJsonArray hits;
        grid::Cell from{1, 0};
        while (const auto hit = grid::Find(cells, what, from)) {
            hits += QJsonArray{hit->row, hit->column};
            from = grid::Next(cells, *hit);
        }
        return QJsonValue(hits);
    });
}

TEST_F(HirarchyCases, TheLogAndTheStatement)
{
    Expect("append_message", [&](const QJsonObject &args) {
        window.AppendMessage(args[u"message"].toString(), QStringLiteral("Log"), false);
        const qint64 row = window.mfgMessge->Rows() - 1;
        return QJsonValue(QJsonObject{{QStringLiteral("value"), window.mfgMessge->TextMatrix(row, 3)},
                                      {QStringLiteral("height"), window.mfgMessge->RowHeight(row)}});
    });
    Expect("panel1", [&](const QJsonObject &args) {
        window.ShowRec(args[u"sql"].toString(), connection, QStringLiteral("c"));
        EXPECT_TRUE(QTest::qWaitFor([&] { return !window.IsRunning(); }, 20000));
        return QJsonValue(window.Statement());
    });
}

TEST_F(HirarchyCases, TheDirectionOfASort)
{
    Expect("sort_mode", [&](const QJsonObject &args) {
        const auto click = [&](FlexGrid *mfg) {
            QTest::mouseClick(mfg->viewport(), Qt::LeftButton, {}, mfg->CellRect(0, 1).center());
            return mfg->Sort();
        };
        frmHirarchy fresh; // whose direction is false
        fresh.resize(400, 300);
        fresh.show();
        fresh.mfg->SetRows(3);
        fresh.mfg->SetTextMatrix(1, 1, args[u"cell"].toString());
        fresh.mfg->SetTextMatrix(2, 1, args[u"cell"].toString());
        if (args[u"direction"].toBool())
            click(fresh.mfg);
        const int mode = click(fresh.mfg);
        const int next = click(fresh.mfg);
        const bool up = next == flexSortGenericAscending || next == flexSortNumericAscending;
        return QJsonValue(QJsonObject{{QStringLiteral("mode"), mode}, {QStringLiteral("direction"), up}});
    });
}

} // namespace
