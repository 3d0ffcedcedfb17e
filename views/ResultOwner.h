#pragma once
// What a result window knows of the window that started its run. The Analyzer implements it.
// Interface thread only; nothing raises.

class QWidget;

class ResultOwner
{
public:
    virtual ~ResultOwner() = default;
    virtual void ActivateOwner() = 0;   // gives it and its text box the focus
    virtual bool RunSQL() = 0;          // F5 in the result window runs the owner again
    virtual QWidget *OwnerWidget() = 0; // whose QPointer tells when the owner has gone
};
