#pragma once
// The editor control: SQL, coloured as a small RTF document. Built on Qt's plain editor, whose blocks get
// their colours as formats of their layout, because these stay out of its text and cost a tenth of a rich document's.
//
// Positions are zero-based and count each line end as CR LF, two characters. A position in the middle of CR LF is
// legal: the start of a selection moves down to the CR, its end up behind the LF, and a length counts from the place
// that was asked for. Positions past the end are clipped.
// There is no undo here: the windows keep their own history. Interface thread only; nothing raises.

#include "controls/EditorText.h"
#include "sqltext/EditControl.h"
#include <QColor>
#include <QPlainTextEdit>
#include <QStringList>
#include <QTextBlock>
#include <QTextCharFormat>
#include <QTextCursor>
#include <functional>
#include <optional>

struct EditorContent;

class RichTextBox : public QPlainTextEdit, public EditControl
{
    Q_OBJECT
public:
    explicit RichTextBox(QWidget *parent = nullptr);
    ~RichTextBox() override;

    QString Tag;

    // The whole content, CR LF between lines; shared, so that reading it is free. Writing takes any kind of line end
    // and puts the caret at 0.
    QString Text() const override;
    void SetText(const QString &text) override;
    // Another text: what it has in common with the present one at both ends keeps its formats; caret and view stay as
    // well unless most of it is new.
    void ChangeText(const QString &text);
    // A long content that was made ready on another thread. Its text goes in by pieces, and `goOn` is asked between
    // them: it may let events through; false from it gives up. False when it was given up, or when the text is not the
    // one that the content was made for: then everything is as it was. Text() is the former one until all is in. The
    // selection stays at its numbers, and what came already can be read. A content that differs in its colours alone
    // costs next to nothing.
    static constexpr qsizetype PieceSize = 16 * 1024; // characters, and one more where they belong together
    bool TakeContent(EditorContent &&made, const std::function<bool()> &goOn);
    // The whole content as RTF. Writing a document with the present text only changes formats: caret and view stay.
    // Otherwise the caret goes to 0.
    QString TextRTF() const override;
    void SetTextRTF(const QString &rtf) override;
    void SetSelRTF(const QString &rtf) override; // the caret goes behind it
    RtfFrame Frame() const override;
    RtfDocument Look() const; // font and colour table, without text
    bool TakeColoured(const ColouredText &coloured) override;

    qsizetype SelStart() const override;
    void SetSelStart(qsizetype position) override; // ends the selection
    qsizetype SelLength() const override;
    void SetSelLength(qsizetype length) override;
    QString SelText() const override;
    void SetSelText(const QString &text) override; // the caret goes behind it
    void SetSelColor(const QColor &colour);        // of the selection, or of what is typed next at the caret

    int GetLineFromChar(qsizetype position) const; // from 0
    int GetFirstVisibleLine() const;
    int GetVisibleLineCount() const; // how many whole lines fit, plus 1
    bool HasColour(int index) const; // does any character have this colour of the table? Without writing the RTF

    // Lines out of sight get their colours when they are first painted; this gives them to all at once.
    void ShowAllColours();
    void print(QPagedPaintDevice *printer); // with the colours

    void SetProportional(bool proportional); // the font of plain reports; the editor's own is fixed-pitch

    // While one lives, the selection can be moved about without the view following it or the screen showing it. They
    // nest. Nothing is painted before the event loop runs again, so painting itself need not be held back, and a key
    // press repaints its line alone.
    class LockUpdate
    {
    public:
        explicit LockUpdate(RichTextBox *box);
        ~LockUpdate();
        LockUpdate(const LockUpdate &) = delete;
        LockUpdate &operator=(const LockUpdate &) = delete;

    private:
        RichTextBox *m_box;
    };

signals:
    void changed(); // the text changed; not raised again while a listener is at work
    // Each single change of the text, whoever makes it, before it shows in Text: `length` characters at `start` of
    // `before` give way to `now`. The document is at work: a listener takes a note and touches nothing.
    void edited(const QString &before, qsizetype start, qsizetype length, const QString &now);
    void filesDropped(const QStringList &files);
    void nodeDropped(const QByteArray &node); // "application/x-brindlewick-node"; the caret is at the drop
    void contextRequested(const QPoint &globalPosition);
    void undoRequested();

public:
    static constexpr const char *NodeMime = "application/x-brindlewick-node";

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    bool canInsertFromMimeData(const QMimeData *source) const override;
    void insertFromMimeData(const QMimeData *source) override;
    QMimeData *createMimeDataFromSelection() const override;

private:
    struct Place // in the document
    {
        QTextBlock block;
        int column;
    };
    Place Find(qsizetype position,
               bool upwards) const; // of a text position; upwards: CR LF's middle moves behind the LF
    qsizetype TextPosition(int documentPosition) const;
    QTextCursor Cursor() const;
    void SetCursor(const QTextCursor &cursor);
    void ReplaceText(qsizetype position, qsizetype length, const QString &text);
    void WriteWhole(const QString &text);
    void TellWhole(const QString &text);
    void Adopt(QTextDocument *document);
    bool Fill(const QString &text, const std::function<bool()> &goOn);
    void Rewrite(const QString &text, bool keepFormats);
    std::vector<RtfRun> Runs() const;

    void OnContentsChange(int position, int removed, int added);
    void OnTextChanged();
    void Resync();
    QString DocumentText(int position, int length) const;

    void ShowLine(const QTextBlock &block, int line);
    void ShowLines(int first, int last);
    void ShowEdited(int first, int last);
    void ShowStale(int first, int last);
    int LastVisibleLine() const;
    void MarkDirty(int first, int last);
    QTextCharFormat Format(EditorStyle style) const;
    int ColourIndex(quint32 colour);
    void TakeDocument(const RtfDocument &document);
    void TakeFragment(const RtfDocument &document);
    void TakeTable(const std::vector<quint32> &colours);
    void TakeRuns(const std::vector<RtfRun> &runs, qsizetype start, qsizetype length, const std::vector<int> &mapping);
    void Lock();
    void Unlock();

    EditorText m_content;
    std::vector<quint32> m_colours; // the colour table: 0xRRGGBB or RtfAutomaticColour; 0 is the default text
    QString m_fontName = QStringLiteral("Courier New"); // as the RTF names it
    int m_fontHalfPoints = 17;
    mutable std::vector<QTextCharFormat> m_formats; // by colour, bold, italic
    std::optional<EditorStyle> m_typing;            // set by SetSelColor, for text typed at m_typingAt
    int m_typingAt = -1;
    int m_quiet = 0;        // the document is being rewritten from within: its signals are none of the text's
    bool m_pending = false; // the text changed and nobody was told yet
    bool m_telling = false; // listeners of changed() are at work
    bool m_filling = false; // the document is not yet the text
    int m_locks = 0;
    std::optional<QTextCursor> m_shadow; // the selection while locked
    std::optional<qsizetype> m_asked;    // what SetSelStart was given, as long as the selection starts there
    int m_scrollX = 0, m_scrollY = 0;    // the view when the first lock was taken
};
