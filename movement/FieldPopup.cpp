#include "movement/FieldPopup.h"

#include "lang/Text.h"

QString MenuText(const QString &name)
{
    return lang::Replace(name, QStringLiteral("&"), QStringLiteral("&&"));
}

FieldPopup::FieldPopup(QWidget *window) : QMenu(window)
{
    setObjectName(QStringLiteral("mnuPopup"));
    mnuTitle = addAction(QString());
    mnuTitle->setObjectName(QStringLiteral("mnuTitle"));
    mnuTitle->setEnabled(false);
    m_end = addSeparator();
}

QAction *FieldPopup::AddEntry(QMenu *menu, const char *name, const QString &caption, const QString &tag)
{
    QAction *entry = menu->addAction(caption);
    entry->setObjectName(QLatin1String(name));
    entry->setData(tag);
    return entry;
}

void FieldPopup::SetFields(const QStringList &fields)
{
    m_fields = fields;
    for (QAction *entry : mnuField)
        delete entry;
    mnuField.clear();
    for (const QString &field : fields) {
        auto *entry = new QAction(MenuText(field), this);
        entry->setObjectName(QStringLiteral("mnuField%1").arg(mnuField.size()));
        connect(entry, &QAction::triggered, this, [this, field] { emit Chosen(field); });
        insertAction(m_end, entry);
        mnuField << entry;
    }
}

void FieldPopup::ShowFor(const QString &header, const QPoint &globalPosition)
{
    mnuTitle->setText(MenuText(QStringLiteral("Map File Column ") + header + QStringLiteral(" to:")));
    popup(globalPosition);
}
