#include "controls/StatusBar.h"
#include "controls/Skin.h"
#include "controls/Twips.h"
#include <QApplication>
#include <QDateTime>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>

// One panel: a sunken label that shows its text elided and can be pressed.
class StatusPanel : public QWidget
{
public:
    StatusPanel(StatusBar *bar, StatusPanelStyle style, int number) : QWidget(bar), Style(style), m_number(number)
    {
        setFocusPolicy(style == sbrText ? Qt::TabFocus : Qt::NoFocus);
        setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Preferred);
        SetName();
    }

    void Set(const QString &text)
    {
        if (text == Text)
            return;
        Text = text;
        SetName();
        if (Tip.isEmpty())
            setToolTip(text.left(1000));
        if (!Spring)
            updateGeometry();
        update();
    }

    QString Line() const // what fits a bar: one line
    {
        QString line = Text.left(2000);
        for (QChar &c : line)
            if (c == QLatin1Char('\n') || c == QLatin1Char('\r') || c == QLatin1Char('\t'))
                c = QLatin1Char(' ');
        return line;
    }

    QSize sizeHint() const override
    {
        const int text = Spring ? 0 : std::min(fontMetrics().horizontalAdvance(Line()) + 14, 480);
        return {std::max(text, MinWidth), fontMetrics().height() + 8};
    }
    QSize minimumSizeHint() const override { return {Spring ? 24 : std::max(MinWidth, 16), sizeHint().height()}; }

    StatusPanelStyle Style;
    QString Text, Tip;
    bool Spring = false, Dim = false;
    int MinWidth = 0; // pixels

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        const QRect frame = rect().adjusted(1, 1, -1, -1);
        QColor line = palette().color(QPalette::WindowText);
        line.setAlphaF(0.25f);
        painter.setPen(hasFocus() ? SkinColour(SkinRole::Focus) : line);
        painter.drawRect(frame.adjusted(0, 0, -1, -1));
        painter.setPen(palette().color(Dim ? QPalette::Disabled : QPalette::Active, QPalette::WindowText));
        const QRect inner = frame.adjusted(6, 0, -6, 0);
        const auto align = Style == sbrText ? Qt::AlignLeft : Qt::AlignHCenter;
        painter.drawText(inner, int(Qt::AlignVCenter | align | Qt::TextSingleLine),
                         fontMetrics().elidedText(Line(), Qt::ElideRight, inner.width()));
    }
    void mouseReleaseEvent(QMouseEvent *event) override
    {
        if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
            emit static_cast<StatusBar *>(parentWidget())->PanelClick(m_number);
    }
    void mousePressEvent(QMouseEvent *event) override { event->accept(); }
    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->key() == Qt::Key_Space || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
            emit static_cast<StatusBar *>(parentWidget())->PanelClick(m_number);
        else
            QWidget::keyPressEvent(event);
    }

private:
    void SetName() { setAccessibleName(Text.isEmpty() ? QStringLiteral("Panel %1").arg(m_number) : Text); }

    int m_number;
};

namespace {
struct StyleRow
{
    StatusPanelStyle style;
    const char *text;
    const char *widest;
};
constexpr StyleRow kStyleRows[] = {
    {sbrCaps, "CAPS", "CAPS"}, {sbrNum, "NUM", "NUM"},      {sbrIns, "INS", "INS"},
    {sbrScrl, "SCRL", "SCRL"}, {sbrTime, nullptr, "88:88"}, {sbrDate, nullptr, "8888-88-88"},
};
} // namespace

StatusBar::StatusBar(QWidget *parent) : QWidget(parent), m_layout(new QHBoxLayout(this))
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(1);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(&m_clock, &QTimer::timeout, this, &StatusBar::UpdateAutomatic);
}

int StatusBar::AddPanel(StatusPanelStyle style, bool spring, int minWidthTwips)
{
    auto *const panel = new StatusPanel(this, style, int(m_panels.size()) + 1);
    panel->Spring = spring;
    panel->MinWidth = ToPixels(minWidthTwips);
    for (const StyleRow &row : kStyleRows) {
        if (row.style != style)
            continue;
        panel->MinWidth = std::max(panel->MinWidth, fontMetrics().horizontalAdvance(QLatin1String(row.widest)) + 16);
        panel->Dim = style == sbrNum || style == sbrScrl || style == sbrCaps;
        if (row.text)
            panel->Set(QLatin1String(row.text));
        if (!m_clock.isActive()) {
            m_clock.start(1000);
            qApp->installEventFilter(this);
        }
    }
    m_layout->insertWidget(int(m_panels.size()), panel, spring ? 1 : 0);
    m_panels << panel;
    UpdateAutomatic();
    return int(m_panels.size());
}

StatusPanel *StatusBar::Panel(int panel) const
{
    return panel >= 1 && panel <= m_panels.size() ? m_panels[panel - 1] : nullptr;
}

QString StatusBar::PanelText(int panel) const
{
    const StatusPanel *const found = Panel(panel);
    return found ? found->Text : QString();
}

void StatusBar::SetPanelText(int panel, const QString &text)
{
    if (StatusPanel *const found = Panel(panel))
        found->Set(text);
}

bool StatusBar::PanelEnabled(int panel) const
{
    const StatusPanel *const found = Panel(panel);
    return found && !found->Dim;
}

void StatusBar::SetPanelToolTip(int panel, const QString &text)
{
    if (StatusPanel *const found = Panel(panel)) {
        found->Tip = text;
        found->setToolTip(text.isEmpty() ? found->Text : text);
    }
}

QRect StatusBar::PanelRect(int panel) const
{
    const StatusPanel *const found = Panel(panel);
    return found ? found->geometry() : QRect();
}

void StatusBar::AddWidget(QWidget *widget)
{
    m_layout->addWidget(widget);
}

void StatusBar::SetOverwrite(bool on)
{
    m_overwrite = on;
    UpdateAutomatic();
}

void StatusBar::UpdateAutomatic()
{
    const QDateTime now = QDateTime::currentDateTime();
    for (StatusPanel *const panel : m_panels) {
        bool dim = panel->Dim;
        if (panel->Style == sbrTime)
            panel->Set(now.toString(QStringLiteral("hh:mm")));
        else if (panel->Style == sbrDate)
            panel->Set(now.toString(QStringLiteral("yyyy-MM-dd")));
        else if (panel->Style == sbrCaps)
            dim = !m_caps;
        else if (panel->Style == sbrIns)
            dim = m_overwrite;
        if (dim != panel->Dim) {
            panel->Dim = dim;
            panel->update();
        }
    }
}

bool StatusBar::eventFilter(QObject *object, QEvent *event)
{
    // A letter that comes against what Shift says betrays the state of the lock; the lock key itself flips it.
    if (event->type() == QEvent::KeyPress) {
        const auto *const key = static_cast<QKeyEvent *>(event);
        const QString text = key->text();
        bool caps = m_caps;
        if (text.size() == 1 && text[0].isLetter() && text[0].toLower() != text[0].toUpper())
            caps = text[0].isUpper() != key->modifiers().testFlag(Qt::ShiftModifier);
        else if (key->key() == Qt::Key_CapsLock && object->isWindowType())
            caps = !m_caps;
        if (caps != m_caps) {
            m_caps = caps;
            UpdateAutomatic();
        }
    }
    return QWidget::eventFilter(object, event);
}
