#pragma once
// The map on which a query or a diagram is drawn: a box for each occurrence of a table, a line for each join, on one
// painted surface. The boxes and lines are numbered objects of the model (visual/logic) and no widgets; the surface
// asks the model what lies under the pointer, the topmost first.
//
// Fields are read from gConn beside the living windows; while that lasts the map takes no other input, and a second
// reading is refused. What cannot be read brings no box and no message. Lengths and places are twips of the surface
// unless they are rectangles, which are its pixels. Items count from 1. Interface thread; nothing is raised.

#include "ado/ObjectName.h"
#include "visual/logic/MapEdit.h"
#include <QWidget>
#include <functional>
#include <memory>

class MapSurface;
class QMenu;
class QScrollBar;
class QTimer;
class ucPathFinder;

class ucTableMap : public QWidget
{
    Q_OBJECT
public:
    explicit ucTableMap(QWidget *parent = nullptr);
    ~ucTableMap() override;

    bool ShowStar = true; // an item "*" in front of the fields of tables to come
    // The join dialog; without one every question counts as cancelled.
    std::function<JoinAnswer(const JoinQuestion &question, QWidget *parent)> AskJoin;

    void BringToTop(); // the current table
    void SendToBottom();
    void SaveState(QObject *) {} // a map keeps nothing
    void LoadState(QObject *) {}
    void ClearMap();
    void RefreshMap();
    void MakeGray();
    void MakeColor();
    void AllowCheckBoxes(bool Value);
    bool JoinExists(const QString &Table1, const QString &Field1, const QString &Table2, const QString &Field2) const;
    QString GetJoinStatement(bool IsOracle) const;
    void AddAll();    // all tables that have a foreign key in either role, with a join for each column of a key
    void AddLinked(); // the neighbours of the current table, always as new boxes
    QString GetTableList() const;
    QString StatementName(const QString &Alias) const; // how a statement names it, so that the server finds it
    void UnloadTable();                                // the current table; its joins stay
    void SetItemCheck(const QString &Alias, const QString &Field, bool Value);
    QString GetRealName(const QString &Alias) const;
    void RemoveCurrentTable(); // the one whose menu was opened last, with the joins of its name
    const MapTable *AddTable(const QString &TableName); // null when it cannot be read
    const MapTable *AddTable(const ADODB::ObjectName &Object);
    int PopulateTable(int Table, const QString &TableName); // anew, with the count of the fields
    int GetFieldIndex(int TableIndex, const QString &Field) const;
    void AddNewTable(); // asks which
    int TableCount(const QString &TableName) const;
    QString GetTableName(const QString &TableName) const;
    QWidget *Hwnd() const; // the surface

    const MapTables &Tables() const;
    const MapJoins &Joins() const;
    const MapTable *lvTable(int Index) const; // null in a gap
    const ucPathFinder *PF(int Index) const;
    int CurrentTable() const; // 0 for none
    int DragSourceIndex() const;
    bool IsReading() const;
    QRect TableRect(int Index) const;
    QRect ItemRect(int Index, int Item) const;
    void ShowJoinProperties(int Index);
    void RemoveJoin(int Index);
    static QString FieldMimeType(); // of a field dragged out of the map; its text is "alias.field"

    QScrollBar *VScroll1 = nullptr, *HScroll1 = nullptr;
    QTimer *tmrAutoScrollLR = nullptr, *tmrAutoScrollTB = nullptr;
    QMenu *mnuTable = nullptr, *mnuPopup = nullptr; // their Tags: the number of the table, of the join

signals:
    void TableClicked(const MapTable &Table); // selected, or a check changed
    void TableAdded(const MapTable &Table);
    void CreateJoin(const QString &Table1, const QString &Field1, const QString &Table2, const QString &Field2,
                    const QString &Operator);
    void TableRemoved(const QString &TableName, const QString &Alias);
    void JoinsChanged(); // there are more or fewer of them, or one is another
    // Button 1 left, 2 right, 4 middle; Shift 1 Shift, 2 Control, 4 Alt.
    void MouseDown(int Button, int Shift, double X, double Y);
    void MouseMove(int Button, int Shift, double X, double Y);
    void MouseUp(int Button, int Shift, double X, double Y, bool OnTable);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    friend class MapSurface;
    struct Body;
    std::unique_ptr<Body> m;
};
