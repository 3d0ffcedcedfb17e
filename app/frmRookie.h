#pragma once
// "Add Connection": the welcome of a start without any stored connection.

#include "frame/ModalForm.h"

class frmRookie : public ModalForm
{
    Q_OBJECT
public:
    explicit frmRookie(QWidget *parent = nullptr);
};
