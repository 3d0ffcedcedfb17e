#pragma once
// "About Us": name, version, licence, and what the program runs on: the toolkit and the database drivers found here.

#include "frame/ModalForm.h"

class frmAbout : public ModalForm
{
    Q_OBJECT
public:
    explicit frmAbout(QWidget *parent = nullptr);
    // The built-in driver with its version, then the drivers that the driver manager knows now.
    static QStringList Drivers();
};
