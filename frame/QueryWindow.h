#pragma once
// A child that holds a query's text, as the main window sees it: it opens one on a connection and puts texts of files
// and generators in. The Analyzer is one. Interface thread; nothing here raises.

#include <QString>

class QueryWindow
{
public:
    virtual ~QueryWindow() = default;

    // Of that stored connection, whose text it loads and keeps; "" makes a scratch window, which does neither. Once.
    virtual void OpenFor(const QString &connectionName) = 0;
    virtual QString Text() const = 0;
    // And colours it. A long text comes beside the living windows: false when the user gave it up, and then the former
    // one stays. The window may have been closed meanwhile.
    virtual bool SetText(const QString &text) = 0;
    virtual void SetFileFilter(const QString &filter) = 0; // what its save dialog offers
};
