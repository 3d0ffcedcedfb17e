#pragma once
// "Table Relationships": one table in the middle with its fields, what it refers to on the left, what refers to it on
// the right, and a line for each pair of linked columns. A click on a table at either side makes it the middle one.
//
// The catalogue and the fields are read on the connection's own thread; Escape gives up, and what stood in the grids
// stays. What cannot be read is told in the status bar. Unloads itself when another connection is made, since all that
// it shows belongs to the former one. Interface thread; nothing raises.

#include "ado/ObjectName.h"
#include "frame/ChildWindow.h"
#include "views/logic/LinkRows.h"
#include <QPointer>

class FlexGrid;
class QFrame;
class QLabel;
class QPropertyAnimation;

class frmLink : public ChildWindow
{
    Q_OBJECT
public:
    explicit frmLink(QWidget *parent = nullptr);

    ChildNames Answers() const override { return AnswersOf<frmLink>(); }
    void Activated() override;
    void RefreshForm(const QString &connectionName) override;

    void LoadTable(const QString &Table);
    void LoadTable(const ADODB::ObjectName &picked);
    void DrawLinks(); // the lines are painted anew

    // One drawn line, in pixels of the window: from the primary key's side to the foreign key's.
    struct Line
    {
        QPointF Square, Circle;
    };
    std::vector<Line> Lines() const;

    // The controls, by their names.
    FlexGrid *mfgPK = nullptr;
    FlexGrid *mfg = nullptr;
    FlexGrid *mfgFK = nullptr;
    QFrame *fraLedgend = nullptr;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    FlexGrid *NewGrid(const char *name, const QString &accessible, const QStringList &headings);
    void BuildLegend();
    void Load(const LinkTarget &target);
    void Fill(const QString &table, const LinkRows &links, const QStringList &fields);
    void GrowForRows();
    void LayOut();
    void Walk(FlexGrid *grid);
    void EndMove();
    void AddLines(std::vector<Line> &lines, const FlexGrid *side, bool isLeft) const;

    LinkRows m_links;
    QPointer<QFrame> m_moving; // on its way to the middle
    QPointer<QPropertyAnimation> m_way;
    LinkTarget m_next; // what it leads to
};
