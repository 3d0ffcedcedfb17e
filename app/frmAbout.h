#pragma once
// "About Us": name, version, and what the program runs on.

#include "data/ModalForm.h"

class frmAbout : public ModalForm
{
    Q_OBJECT
public:
    explicit frmAbout(QWidget *parent = nullptr);
};
