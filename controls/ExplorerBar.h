#pragma once
// The side bar: titled bars that open and close, each with entries. Owned by its parent. Interface thread.
//
// Bars and entries are found by key (exactly) or by number, which counts from 1. Keys are unique among the bars and
// among the entries of one bar: adding one that is there raises ControlError 35602, asking for one that is not there
// 35601. Pointers to bars and entries stay good until they are removed.

#include <QAbstractScrollArea>
#include <QColor>
#include <memory>
#include <vector>

class ExplorerBar;
class ExplorerBarBar;

// An entry. Changing it repaints the bar.
class ExplorerBarItem
{
public:
    QString Key() const { return m_key; }
    QString Text() const { return m_text; }
    void SetText(const QString &text);
    QString Tag() const { return m_tag; }
    void SetTag(const QString &tag) { m_tag = tag; }
    int Icon() const { return m_icon; } // StateIcon's number; 0: the drawing of the key
    void SetIcon(int icon);
    QString ToolTip() const { return m_toolTip; }
    void SetToolTip(const QString &text) { m_toolTip = text; }
    bool Enabled() const { return m_enabled; }
    void SetEnabled(bool on);
    ExplorerBarBar *Bar() const { return m_bar; }
    void EnsureVisible();

private:
    friend class ExplorerBarBar;
    friend class ExplorerBarItems;
    friend class ExplorerBar;
    QString Line() const; // what is painted of the text: without control characters, and of a bearable length
    ExplorerBarBar *m_bar = nullptr;
    QString m_key, m_text, m_tag, m_toolTip;
    int m_icon = 0;
    bool m_enabled = true;
    mutable int m_wrapWidth = -1, m_wrapHeight = 0; // the height of the wrapped text at that width, pixels
};

class ExplorerBarItems
{
public:
    // An entry without a key in the bar "CONN" gets the key "C:" and a number that rises with each such entry.
    ExplorerBarItem *Add(const QString &key, const QString &text, int icon = 0, const QString &toolTip = {},
                         const QString &tag = {});
    int Count() const { return int(m_items.size()); }
    ExplorerBarItem *Item(int index) const;          // from 1; 35600
    ExplorerBarItem *Item(const QString &key) const; // 35601
    ExplorerBarItem *Find(const QString &key) const; // null when it is not there
    void Remove(const QString &key);
    void Remove(ExplorerBarItem *item);
    void Clear();

private:
    friend class ExplorerBarBar;
    friend class ExplorerBar;
    ExplorerBarBar *m_bar = nullptr;
    std::vector<std::unique_ptr<ExplorerBarItem>> m_items;
    int m_counter = 0;
};

class ExplorerBarBar
{
public:
    QString Key() const { return m_key; }
    QString Title() const { return m_title; }
    void SetTitle(const QString &title);
    bool Expanded() const { return m_expanded; }
    void SetExpanded(bool on);
    bool Wraps() const { return m_wraps; }
    void SetWraps(bool on); // entries show their whole text, in as many lines as it takes; at first off
    ExplorerBarItems &Items() { return m_items; }
    const ExplorerBarItems &Items() const { return m_items; }

private:
    friend class ExplorerBar;
    friend class ExplorerBarItem;
    friend class ExplorerBarItems;
    ExplorerBar *m_owner = nullptr;
    QString m_key, m_title;
    bool m_expanded = true, m_wraps = false;
    ExplorerBarItems m_items;
};

class ExplorerBar : public QAbstractScrollArea
{
    Q_OBJECT
public:
    explicit ExplorerBar(QWidget *parent = nullptr);
    ~ExplorerBar() override;

    ExplorerBarBar *AddBar(const QString &key, const QString &title);
    void RemoveBar(const QString &key); // no such bar: nothing happens
    int BarCount() const { return int(m_bars.size()); }
    ExplorerBarBar *Bar(int index) const; // from 1
    ExplorerBarBar *Bar(const QString &key) const;
    ExplorerBarBar *FindBar(const QString &key) const; // null when it is not there

    bool Redraw() const { return m_lock == 0; }
    void SetRedraw(bool on); // counts: as many "on" as "off" bring the painting back

    ExplorerBarItem *Current() const; // the entry with the keyboard's focus, or null
    ExplorerBarItem *ItemAt(const QPoint &viewportPosition) const;
    QRect ItemRect(const ExplorerBarItem *item) const; // pixels in the viewport; empty while its bar is closed
    QRect HeaderRect(const ExplorerBarBar *bar) const;

    // The skin's colours.
    void SetGradient(const QColor &top, const QColor &bottom);
    void SetHeaderColours(const QColor &ground, const QColor &text);
    void SetItemColours(const QColor &text, const QColor &hover, const QColor &hoverText);

    QSize sizeHint() const override;

signals:
    void ItemClick(ExplorerBarItem *item);
    void ItemRightClick(ExplorerBarItem *item, const QPoint &globalPosition);
    void BarClick(ExplorerBarBar *bar); // after it opened or closed

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    friend class ExplorerBarBar;
    friend class ExplorerBarItem;
    friend class ExplorerBarItems;
    struct Spot
    { // a header, or an entry of it
        ExplorerBarBar *bar = nullptr;
        ExplorerBarItem *item = nullptr;
        bool operator==(const Spot &) const = default;
    };
    int ItemHeight(const ExplorerBarItem &item, int width) const;
    void Changed(); // lays out anew and repaints, unless locked
    void Forget(const ExplorerBarItem *item);
    std::vector<std::pair<Spot, QRect>> Layout() const; // in viewport pixels
    Spot SpotAt(const QPoint &position) const;
    void Press(const Spot &spot);
    void MoveFocus(int step);
    void Show(const Spot &spot);

    std::vector<std::unique_ptr<ExplorerBarBar>> m_bars;
    Spot m_focus, m_hover, m_pressed;
    int m_lock = 0;
    QColor m_top, m_bottom, m_header, m_headerText, m_itemText, m_hoverGround, m_hoverText;
};
