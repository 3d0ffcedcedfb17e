#pragma once
// The popup of a mapping grid: a title, then the fields to map a column to, one entry each. A window adds entries of
// its own. Owned by its window. Interface thread; nothing raises.

#include <QMenu>
#include <QStringList>
#include <functional>

class FieldPopup : public QMenu
{
    Q_OBJECT
public:
    explicit FieldPopup(QWidget *window); // "mnuPopup" with "mnuTitle"

    // The entries mnuField(n), in their order, each with a text that tells it from the others.
    void SetFields(const QStringList &fields);
    const QStringList &Fields() const { return m_fields; }
    // An entry with a tag, ahead of the fields or behind them.
    QAction *AddEntry(QMenu *menu, const char *name, const QString &caption, const QString &tag = {});
    void ShowFor(const QString &header, const QPoint &globalPosition); // "Map File Column " + header + " to:"

    QAction *mnuTitle = nullptr;
    QList<QAction *> mnuField;

signals:
    void Chosen(const QString &field);

private:
    QStringList m_fields;
    QAction *m_end = nullptr; // the fields stand ahead of it
};

// An "&" in a name is no mark of a key.
QString MenuText(const QString &name);
