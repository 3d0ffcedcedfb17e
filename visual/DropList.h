#pragma once
// A combo box that asks for its entries when it is about to open. Whoever fills it may let events through; a box that
// went or hid meanwhile does not open. Interface thread; nothing raises.

#include <QComboBox>
#include <QPointer>

class DropList : public QComboBox
{
    Q_OBJECT
public:
    using QComboBox::QComboBox;

    void showPopup() override
    {
        const QPointer<DropList> self(this);
        emit Opening();
        if (self && isVisible())
            QComboBox::showPopup();
    }

signals:
    void Opening();
};
