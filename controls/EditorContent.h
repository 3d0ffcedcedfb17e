#pragma once
// A whole content for the editor control, made ready on any thread: text, colours, and how it differs from the content
// before it. RichTextBox::TakeContent shows it without a long pause. A plain value; nothing is raised but for want of
// memory. Positions as in EditorText.

#include "controls/EditorText.h"
#include "sqltext/Rtf.h"
#include <QString>
#include <vector>

// The middle in which two texts differ; it never begins or ends between CR and LF.
struct TextDifference
{
    qsizetype start = 0, oldLength = 0, newLength = 0;
};
TextDifference CompareTexts(QStringView before, QStringView after);

struct EditorContent
{
    // `former` is the text that it replaces. A document without a colour table leaves the control's as it is.
    EditorContent(const RtfDocument &document, const QString &former);

    QString former;
    TextDifference difference;
    QString now; // what stands in the middle that differs
    EditorText content;
    std::vector<quint32> colours;
    QString fontName;
    int fontHalfPoints;
};
