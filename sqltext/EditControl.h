#pragma once
// What the text engine asks of the rich edit control. RichTextBox implements it; a test double does so without a
// window. Owned by the window; used on the interface thread only.
//
// Positions are zero-based, in UTF-16 units, and a line end, always CR LF, counts as two. A position past the end is
// clipped; one between CR and LF is legal: a selection's start snaps down to the CR, its end up behind the LF.

#include "sqltext/Rtf.h"

// The two lines of a control's RTF that a coloured text takes over.
struct RtfFrame
{
    QString head; // line 0: the head with the font table
    QString font; // the line with the font size, up to and with its first blank
};

// The frame of an RTF text: the font line is line 1 when that contains "\fs", else line 2 when that does, else line 3.
// A null string stands for a line that is not there.
RtfFrame FrameOf(QStringView textRTF);

// The outcome of a colouring, ready to show: exactly what reading the composed RTF gives.
struct ColouredText
{
    bool whole = true;    // replaces all; otherwise the selection
    RtfDocument document; // its text may differ from the control's: colouring eats a blank behind "]"
};

class EditControl
{
public:
    virtual ~EditControl() = default;

    virtual QString Text() const = 0;
    virtual void SetText(const QString &text) = 0;
    virtual QString TextRTF() const = 0;
    virtual void SetTextRTF(const QString &rtf) = 0; // replaces all, read as a whole document
    virtual void SetSelRTF(const QString &rtf) = 0;  // replaces the selection, read as a fragment

    virtual qsizetype SelStart() const = 0;
    virtual void SetSelStart(qsizetype position) = 0; // the selection becomes empty
    virtual qsizetype SelLength() const = 0;
    virtual void SetSelLength(qsizetype length) = 0;
    virtual QString SelText() const = 0;
    virtual void SetSelText(const QString &text) = 0;

    // The frame of TextRTF. A control that writes its RTF with WriteRtf can tell it without writing all of it.
    virtual RtfFrame Frame() const { return FrameOf(TextRTF()); }

    // A control that shows documents may take the finished one and answer true; it then does what SetTextRTF or
    // SetSelRTF does with the composed text. By default it gets that text.
    virtual bool TakeColoured(const ColouredText &) { return false; }
};
