#pragma once
// An edit control without a window: a document, a selection, and a log of what was written.

#include "sqltext/EditControl.h"
#include "sqltext/FixText.h"

#include <QStringList>

class EditDouble : public EditControl
{
public:
    explicit EditDouble(const QString &text) { EditDouble::SetText(text); }

    RtfDocument document;
    QStringList log;
    bool takesColoured = false;

    QString Text() const override { return document.text; }
    void SetText(const QString &text) override
    {
        document = {};
        document.text = text;
        if (!text.isEmpty())
            document.runs = {{0, text.size(), 0, false, false}};
        m_start = m_length = 0;
    }
    QString TextRTF() const override { return WriteRtf(document); }
    void SetTextRTF(const QString &rtf) override
    {
        log += QStringLiteral("TextRTF");
        Replace(true, ReadRtf(rtf, false));
    }
    void SetSelRTF(const QString &rtf) override
    {
        log += QStringLiteral("SelRTF");
        Replace(false, ReadRtf(rtf, true));
    }
    qsizetype SelStart() const override { return m_start; }
    void SetSelStart(qsizetype position) override
    {
        log += QStringLiteral("SelStart %1").arg(position);
        m_asked = qBound(qsizetype(0), position, document.text.size());
        m_start = Snapped(document.text, {m_asked, 0}).start;
        m_length = 0;
    }
    qsizetype SelLength() const override { return m_length; }
    void SetSelLength(qsizetype length) override
    {
        log += QStringLiteral("SelLength %1").arg(length);
        // From the place that was asked for, if the caret still stands where that one took it.
        const QString &text = document.text;
        const bool here = Snapped(text, {m_asked, 0}).start == m_start;
        m_length = Snapped(text, {here ? m_asked : m_start, length}).length;
    }
    QString SelText() const override { return document.text.mid(m_start, m_length); }
    void SetSelText(const QString &text) override
    {
        log += QStringLiteral("SelText");
        const qsizetype start = m_start;
        SetText(document.text.left(m_start) + text + document.text.mid(m_start + m_length));
        m_start = start + text.size();
    }
    bool TakeColoured(const ColouredText &coloured) override
    {
        if (takesColoured) {
            log += QStringLiteral("taken");
            Replace(coloured.whole, coloured.document);
        }
        return takesColoured;
    }

private:
    void Replace(bool whole, const RtfDocument &with)
    {
        if (whole || m_length == document.text.size()) {
            document = with;
            m_start = 0;
        } else { // looks of a part are of no interest here
            const qsizetype start = m_start;
            const QString text = document.text.left(m_start) + with.text + document.text.mid(m_start + m_length);
            SetText(text);
            m_start = start + with.text.size();
        }
        m_length = 0;
    }

    qsizetype m_start = 0, m_length = 0;
    qsizetype m_asked = 0;
};
