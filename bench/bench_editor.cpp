// The editor with a long text: coloured and shown against a plain editor that only sets the text and as many formats,
// and one key press against the whole pass.
#include "Figures.h"

#include "analyzer/frmSQL.h"
#include "controls/RichTextBox.h"
#include "sqltext/IntColorAll.h"
#include "sqltext/clsColorTable.h"
#include <QApplication>
#include <QPlainTextEdit>
#include <QTest>
#include <QTextBlock>
#include <QTextLayout>

namespace {

constexpr qsizetype kText = 1'200'000;

QString SqlText(qsizetype length)
{
    QString text;
    text.reserve(length + 200);
    for (int i = 0; text.size() < length; ++i)
        text +=
            QStringLiteral("SELECT a.id, b.name FROM orders a INNER JOIN customers b ON a.id = b.id WHERE b.n > %1\r\n")
                .arg(i);
    return text;
}

struct Line
{
    QList<QTextLayout::FormatRange> formats;
};

void Paint(QWidget &widget)
{
    widget.show();
    QCoreApplication::processEvents();
    widget.repaint();
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    InitColorTable();
    LoadKeywords(QStringLiteral("VB"), gKeywordSet, QStringLiteral(BRINDLEWICK_SOURCE_DIR "/data/files"));
    if (gKeywordSet.Words().isEmpty()) {
        std::fprintf(stderr, "no keyword list\n");
        return 1;
    }
    const QString text = SqlText(kText);

    // The formats that the peer gets are those that our editor shows.
    std::vector<Line> lines;
    qsizetype formats = 0;
    {
        RichTextBox box;
        box.SetText(text);
        intColorAll(box, QString(), 0);
        box.ShowAllColours();
        for (QTextBlock block = box.document()->begin(); block.isValid(); block = block.next()) {
            lines.push_back({block.layout()->formats()});
            formats += lines.back().formats.size();
        }
    }
    std::fprintf(stderr, "  %lld characters, %zu lines, %lld formats\n", (long long)text.size(), lines.size(),
                 (long long)formats);

    const double show = bench::Ratio(
        7,
        [&] {
            RichTextBox box;
            box.resize(800, 600);
            box.SetText(text);
            intColorAll(box, QString(), 0);
            Paint(box);
        },
        [&] {
            QPlainTextEdit edit;
            edit.setUndoRedoEnabled(false);
            edit.setLineWrapMode(QPlainTextEdit::NoWrap);
            edit.resize(800, 600);
            edit.setPlainText(text);
            size_t i = 0;
            for (QTextBlock block = edit.document()->begin(); block.isValid() && i < lines.size(); block = block.next())
                block.layout()->setFormats(lines[i++].formats);
            Paint(edit);
        });
    bench::Figure("editor_show_vs_plain", show, 2);

    frmSQL window;
    window.resize(1000, 600);
    window.SetText(text);
    Paint(window);
    RichTextBox *box = window.txtSQL;
    box->SetSelStart(kText / 2 + 40);
    QCoreApplication::processEvents();
    // Neither side is charged with the painting, which is that of one screen however long the text is.
    std::vector<double> ratios;
    for (int round = 0; round < bench::Rounds(15); ++round) {
        const double press = bench::Seconds([&] { QTest::keyClick(box, Qt::Key_X); });
        QCoreApplication::processEvents();
        const double pass = bench::Seconds([&] { window.FixText(true, true, 2); });
        QCoreApplication::processEvents();
        ratios.push_back(press / pass);
        std::fprintf(stderr, "  key %.5f s, pass %.4f s\n", press, pass);
    }
    const double key = bench::Median(ratios);
    bench::Figure("editor_key_vs_pass", key, 0.05);
    return 0;
}
