#pragma once
// What the tests of the editor control read beside its own operations: the document as the toolkit holds it, and the
// formats that a line is drawn with.

#include "controls/RichTextBox.h"
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QTextLayout>
#include <gtest/gtest.h>

inline QString DocumentText(const RichTextBox &box)
{
    QString text;
    for (QTextBlock block = box.document()->begin(); block.isValid(); block = block.next())
        text += (block.blockNumber() ? QStringLiteral("\r\n") : QString()) + block.text();
    return text;
}

// "3-9 #ff0000 b" for each format of a line, joined by "; ".
inline std::string Shown(RichTextBox &box, int line)
{
    box.ShowAllColours();
    QStringList parts;
    for (const auto &range : box.document()->findBlockByNumber(line).layout()->formats()) {
        QString part = QString::number(range.start) + u'-' + QString::number(range.start + range.length);
        if (range.format.hasProperty(QTextFormat::ForegroundBrush))
            part += u' ' + range.format.foreground().color().name();
        part += range.format.fontWeight() == QFont::Bold ? QStringLiteral(" b") : QString();
        part += range.format.fontItalic() ? QStringLiteral(" i") : QString();
        parts += part;
    }
    return parts.join(QStringLiteral("; ")).toStdString();
}

inline QString Rtf(const QString &body)
{
    return QStringLiteral(
               "{\\rtf1\\ansi{\\fonttbl{\\f0\\fnil Courier New;}}\r\n"
               "{\\colortbl \\red145\\green195\\blue125;\\red0\\green0\\blue255;\\red255\\green0\\blue0;}\r\n"
               "\\viewkind4\\uc1\\pard\\f0\\fs17 \\cf0 ") +
           body + u'}';
}

inline void ShowBox(RichTextBox &box)
{
    box.resize(400, 300);
    box.show();
    box.activateWindow();
    box.setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&box));
    QCoreApplication::processEvents();
}
