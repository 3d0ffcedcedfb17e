// The table map with 300 tables and 600 joins: a scroll step beside the same picture in a QGraphicsView and beside a
// map of a tenth of it, a step of a carried table, a move of the pointer, and the reading of the whole web of keys
// beside one catalogue query with a bare SELECT for each table.
#include "Figures.h"

#include "ado/Connection.h"
#include "ado/Recordset.h"
#include "controls/Skin.h"
#include "data/modMain.h"
#include "frame/AppPath.h"
#include "visual/JoinLayers.h"
#include "visual/ucTableMap.h"
#include <QApplication>
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTemporaryDir>
#include <memory>

namespace {

constexpr int kWidth = 1200, kHeight = 800;

void MakeSchema(int tables)
{
    gConn->BeginTrans();
    for (int i = 0; i < tables; ++i)
        gConn->Execute(QStringLiteral("CREATE TABLE table_%1 (id int PRIMARY KEY, first int REFERENCES table_%2 (id), "
                                      "second int REFERENCES table_%3 (id), name text, price int, note text)")
                           .arg(i)
                           .arg((i + 1) % tables)
                           .arg((i * 7 + 3) % tables));
    gConn->CommitTrans();
}

std::unique_ptr<ucTableMap> MakeMap()
{
    auto map = std::make_unique<ucTableMap>();
    map->ShowStar = false;
    map->AllowCheckBoxes(false);
    map->resize(kWidth, kHeight);
    map->show();
    map->AddAll();
    QCoreApplication::processEvents();
    return map;
}

// A table of the peer: the same strokes in the same colours.
class PeerTable : public QGraphicsItem
{
public:
    PeerTable(const MapTable &table, const QRect &box, int row) : m_table(table), m_size(box.size()), m_row(row)
    {
        setPos(box.topLeft());
    }
    QRectF boundingRect() const override { return {QPointF(0, 0), QSizeF(m_size)}; }
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *) override
    {
        const QRect box(QPoint(0, 0), m_size);
        painter->fillRect(box, SkinColour(SkinRole::List));
        const QRect heading(1, 1, box.width() - 2, m_row);
        painter->fillRect(heading, SkinColour(SkinRole::Button));
        painter->setPen(SkinColour(SkinRole::ButtonText));
        const auto text = [&](const QRect &place, const QString &words) {
            painter->drawText(place, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                              painter->fontMetrics().elidedText(words, Qt::ElideRight, place.width()));
        };
        text(heading.adjusted(5, 0, -5, 0), m_table.Alias);
        painter->setPen(SkinColour(SkinRole::ListText));
        for (size_t i = 0; i < m_table.Items.size(); ++i)
            text(QRect(6, 1 + int(i + 1) * m_row, box.width() - 12, m_row), m_table.Items[i].Text);
        painter->setBrush(Qt::NoBrush);
        painter->setPen(SkinColour(SkinRole::Editor));
        painter->drawRect(box.adjusted(0, 0, -1, -1));
    }

private:
    MapTable m_table;
    QSize m_size;
    int m_row;
};

void FillScene(QGraphicsScene &scene, const ucTableMap &map)
{
    for (const MapJoin &row : map.Joins().Rows()) {
        const ucPathFinder *line = map.PF(row.Index);
        if (!line)
            continue;
        const QPointF from(line->X1 / 15, line->Y1 / 15), to(line->X2 / 15, line->Y2 / 15);
        const double middle = line->X2 - line->X1 < 500 ? from.x() : (from.x() + to.x()) / 2;
        QPainterPath path(from);
        path.lineTo(middle, from.y());
        path.lineTo(middle, to.y());
        path.lineTo(to);
        scene.addPath(path, QPen(Qt::black, 3));
        const QPointF marker((from.x() + to.x()) / 2 - 8, (from.y() + to.y()) / 2 - 8);
        scene.addEllipse(QRectF(marker, QSizeF(16, 16)), QPen(Qt::black, 1.5), Qt::white);
        scene.addEllipse(QRectF(marker + QPointF(5, 5), QSizeF(6, 6)), QPen(Qt::black, 1.5), Qt::black);
    }
    for (int index : map.Tables().Stack())
        scene.addItem(new PeerTable(*map.lvTable(index), map.TableRect(index), map.ItemRect(index, 1).height()));
}

// Ten steps of a bar there and back, each painted.
void Scroll(QScrollBar *bar, QWidget *surface)
{
    for (int i = 0; i < 20; ++i) {
        bar->setValue(bar->value() + (i < 10 ? 1 : -1) * bar->singleStep());
        surface->repaint();
    }
}

void Send(QWidget *surface, QEvent::Type type, const QPoint &at)
{
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, at, surface->mapToGlobal(at), button, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(surface, &event);
}

// A table that the mouse can take by its heading, carried over the map.
void Carry(ucTableMap &map)
{
    QWidget *surface = map.Hwnd();
    const int top = map.Tables().Stack().back();
    Send(surface, QEvent::MouseButtonPress, map.TableRect(top).topLeft() + QPoint(20, 6));
    for (int i = 0; i < 50; ++i) {
        Send(surface, QEvent::MouseMove, QPoint(200 + i * 10, 200 + i * 5));
        QCoreApplication::processEvents();
    }
    Send(surface, QEvent::MouseButtonRelease, {700, 450});
}

struct Folder
{
    QTemporaryDir place;
    void Open(const QString &name, int tables)
    {
        OpenConnection(QStringLiteral("Driver=SQLite;Create=Yes;Database=") + place.filePath(name));
        MakeSchema(tables);
    }
};

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    InitColours();
    Folder folder;
    SetAppPath(folder.place.path());

    folder.Open(QStringLiteral("small.db"), 30);
    const auto small = MakeMap();
    folder.Open(QStringLiteral("large.db"), 300);
    const auto large = MakeMap();
    if (large->Tables().Numbers().size() != 300 || large->Joins().Rows().size() < 590) {
        std::fprintf(stderr, "the map has %zu tables and %zu joins\n", large->Tables().Numbers().size(),
                     large->Joins().Rows().size());
        return 2;
    }
    // Something to scroll to, on both sides.
    for (ucTableMap *map : {small.get(), large.get()})
        map->resize(kWidth / 2, kHeight);

    QGraphicsScene scene;
    scene.setBackgroundBrush(SkinColour(1));
    FillScene(scene, *large);
    QGraphicsView view(&scene);
    view.resize(large->Hwnd()->size());
    view.setAlignment(Qt::AlignLeft | Qt::AlignTop);
    view.show();
    QCoreApplication::processEvents();
    view.horizontalScrollBar()->setSingleStep(large->HScroll1->singleStep() / 15);

    bench::Figure("map_scroll_to_graphics_view",
                  bench::Ratio(
                      7, [&] { Scroll(large->HScroll1, large->Hwnd()); },
                      [&] { Scroll(view.horizontalScrollBar(), view.viewport()); }),
                  1.0);
    bench::Figure(
        "map_scroll_300_to_30",
        bench::Ratio(
            7, [&] { Scroll(large->HScroll1, large->Hwnd()); }, [&] { Scroll(small->HScroll1, small->Hwnd()); }),
        12);
    bench::Figure("map_carry_300_to_30",
                  bench::Ratio(
                      7, [&] { Carry(*large); }, [&] { Carry(*small); }),
                  2);
    bench::Figure("map_pointer_to_repaint",
                  bench::Ratio(
                      7,
                      [&] {
                          for (int i = 0; i < 100; ++i)
                              Send(large->Hwnd(), QEvent::MouseMove, QPoint(i * 5, i * 7));
                      },
                      [&] {
                          for (int i = 0; i < 100; ++i)
                              large->Hwnd()->repaint();
                      }),
                  0.1);

    const auto bare = [&] {
        gConn->OpenSchema(ADODB::adSchemaForeignKeys);
        for (int i = 0; i < 300; ++i)
            gConn->Execute(QStringLiteral("SELECT * FROM table_%1 WHERE 1=0").arg(i));
    };
    const auto all = [&] {
        large->ClearMap();
        large->AddAll();
    };
    bench::Figure("map_add_all_to_bare_statements", bench::Ratio(7, all, bare), 1.3);
    return 0;
}
