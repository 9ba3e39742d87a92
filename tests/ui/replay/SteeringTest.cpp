// SPDX-License-Identifier: Apache-2.0
// The properties by which windows steer the recorder, each recorded and played.
#include "support/TempFolder.h"
#include "ui/replay/Player.h"
#include "ui/replay/Recorder.h"
#include "ui/replay/WidgetFacts.h"
#include "ui/replay/WidgetState.h"

#include <QApplication>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMouseEvent>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTest>
#include <QTreeView>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace zov::ui::replay {
namespace {

FEnvironment Nothing()
{
    return [](const char* name) -> std::optional<std::string> {
        return std::string_view(name) == "VRSHL_GUIREPLAY_STEP_TIMEOUT" ? std::optional("2")
                                                                        : std::nullopt;
    };
}

/// Shows a range of values over its width, and remembers the last one clicked.
class CScale : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;
    Q_INVOKABLE QPointF GUIRecToWorld(const QPointF& at) const
    {
        return {low + at.x() * (high - low) / width(), at.y() / height()};
    }
    Q_INVOKABLE QPointF GUIRecFromWorld(const QPointF& at) const
    {
        return {(at.x() - low) * width() / (high - low), at.y() * height()};
    }
    Q_INVOKABLE QString GUIRecChkCustomContent() const
    {
        return QStringLiteral("Scale: %1").arg(clicked);
    }
    void mousePressEvent(QMouseEvent* event) override
    {
        clicked = qRound(GUIRecToWorld(event->localPos()).x());
    }

    double low = 0.0;
    double high = 100.0;
    int clicked = -1;
};

struct SteeringTest : testing::Test
{
    SteeringTest() { main.resize(400, 500); }

    template <class TWidget>
    TWidget& Add(const char* name)
    {
        if (main.centralWidget() == nullptr) {
            main.setCentralWidget(new QWidget(&main));
            new QVBoxLayout(main.centralWidget());
        }
        auto* widget = new TWidget(main.centralWidget());
        widget->setObjectName(QLatin1String(name));
        main.centralWidget()->layout()->addWidget(widget);
        return *widget;
    }

    template <class TUser>
    const std::vector<SRecordedEvent>& Record(TUser user)
    {
        main.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&main));
        EXPECT_TRUE(recorder.Start(path).Ok());
        user();
        EXPECT_TRUE(recorder.Stop().Ok());
        return recorder.Record().events;
    }
    SPlayResult Play()
    {
        CPlayer player(main, Nothing(), log);
        auto loaded = LoadRecord(path, {}, log);
        EXPECT_TRUE(loaded.Ok());
        player.Play(loaded.Take(), 0.0);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !player.IsPlaying(); }, 20'000));
        return player.Result();
    }
    /// As the windowing system sends it when no button is held.
    static void Move(QWidget& widget, const QPoint& at)
    {
        QMouseEvent move(QEvent::MouseMove, at, widget.mapTo(widget.window(), at),
                         widget.mapToGlobal(at), Qt::NoButton, Qt::NoButton, {});
        QSpontaneKeyEvent::setSpontaneous(&move);
        QApplication::instance()->notify(&widget, &move);
    }

    test::CTempFolder folder;
    std::filesystem::path path = folder.Path() / "GUIReplay_steering.xml";
    CVectorLog log;
    QMainWindow main;
    CRecorder recorder{main, Nothing()};
};

TEST_F(SteeringTest, TheTitleOfAWidgetMayBeItsKey)
{
    int pressed = 0;
    for (const char* title : {"Left", "Right"}) {
        auto& button = Add<QPushButton>("Side");
        button.setText(QLatin1String(title));
        button.setProperty(kRecKeyTitle, true);
        QObject::connect(&button, &QPushButton::clicked, [&pressed, &button] {
            pressed += button.text() == QLatin1String("Right") ? 10 : 1;
        });
    }
    const auto buttons = main.findChildren<QPushButton*>();
    const auto& events = Record([&] { QTest::mouseClick(buttons[1], Qt::LeftButton); });
    ASSERT_EQ(events.size(), 2U);
    EXPECT_TRUE(events[0].target.widgets.back().keyTitle);
    // The names are worth nothing: the other one has the recorded place and name now.
    buttons[1]->setObjectName(QStringLiteral("Moved"));
    main.centralWidget()->layout()->removeWidget(buttons[0]);
    main.centralWidget()->layout()->addWidget(buttons[0]);
    pressed = 0;
    EXPECT_TRUE(Play().Good());
    EXPECT_EQ(pressed, 10);
    for (const std::string& line : log.Lines()) {
        EXPECT_EQ(line.find("Warning"), std::string::npos) << line;
        EXPECT_EQ(line.find("hierarchy"), std::string::npos) << line;
    }
}

TEST_F(SteeringTest, OtherPropertiesSayWhatIsRecorded)
{
    auto& first = Add<QLineEdit>("First");
    auto& second = Add<QLineEdit>("Second");
    auto& button = Add<QPushButton>("Menu");
    auto& tree = Add<QTreeView>("Tree");
    const auto inputs = [&] {
        first.setFocus();
        second.setFocus();
        Move(button, {3, 3});
        Move(*tree.viewport(), {5, 5});
        QTest::mouseClick(&button, Qt::LeftButton);
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, {5, 5});
    };
    for (const SRecordedEvent& event : Record(inputs)) {
        EXPECT_TRUE(event.fields.IsMouse() && event.fields.type != EEvent::MouseMove);
        EXPECT_FALSE(event.async);
    }
    first.setProperty(kRecFocusOut, true);
    for (QWidget* widget : {static_cast<QWidget*>(&button), static_cast<QWidget*>(&tree)}) {
        widget->setProperty(kRecMouseMove, true);
        widget->setProperty(kRecCausePopup, true);
    }
    std::string seen;
    for (const SRecordedEvent& event : Record(inputs)) {
        const auto& widgets = event.target.widgets;
        const bool isInside = widgets.back().objectName == "qt_scrollarea_viewport";
        seen += std::string(EventName(event.fields.type)) + ' ' +
                widgets[widgets.size() - (isInside ? 2 : 1)].objectName +
                (event.async ? " async\n" : "\n");
    }
    EXPECT_EQ(seen, "FocusOut First\n"
                    "MouseMove Menu async\n"
                    "MouseMove Tree async\n"
                    "MouseButtonPress Menu async\n"
                    "MouseButtonRelease Menu async\n"
                    "MouseButtonPress Tree async\n"
                    "MouseButtonRelease Tree async\n");
    first.setFocus();
    EXPECT_TRUE(Play().Good());
    EXPECT_FALSE(first.hasFocus());
}

TEST_F(SteeringTest, PositionsMayCountInWhatIsShown)
{
    auto& scale = Add<CScale>("Scale");
    scale.setMinimumHeight(60);
    scale.setProperty(kRecWorldCoordinate, true);
    auto& view = Add<QGraphicsView>("Scene");
    QGraphicsScene scene(0, 0, 1000, 1000);
    view.setScene(&scene);
    scene.addRect(600, 600, 40, 40)->setFlag(QGraphicsItem::ItemIsSelectable);
    view.setProperty(kRecWorldCoordinate, true);
    auto& chart = Add<CScale>("Chart");
    chart.setMinimumHeight(60);
    chart.setProperty(kRecWorldCoordinate, QLatin1String(kWorldIsShare));
    view.fitInView(scene.sceneRect(), Qt::KeepAspectRatio);
    const auto& events = Record([&] {
        QTest::mouseClick(&scale, Qt::LeftButton, {}, scale.GUIRecFromWorld({75, 0.5}).toPoint());
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.mapFromScene(620, 620));
        QTest::mouseClick(&chart, Qt::LeftButton, {}, {chart.width() / 4, chart.height() / 2});
    });
    ASSERT_EQ(events.size(), 6U);
    EXPECT_NEAR(events[4].realPos.x, 0.25, 0.01);
    EXPECT_NEAR(events[0].realPos.x, 75.0, 1.0);
    EXPECT_NEAR(events[2].realPos.x, 620.0, 5.0);
    const int before = scale.clicked;
    ASSERT_EQ(scene.selectedItems().size(), 1);

    scene.clearSelection();
    scale.clicked = -1;
    chart.clicked = -1;
    scale.low = 50;
    scale.high = 300;
    main.resize(900, 420);
    view.resetTransform();
    view.centerOn(620, 620);
    EXPECT_TRUE(Play().Good());
    EXPECT_NEAR(scale.clicked, before, 1);
    EXPECT_NEAR(chart.clicked, 25, 1);
    EXPECT_EQ(scene.selectedItems().size(), 1);
    view.centerOn(0, 0);
}

TEST_F(SteeringTest, AnItemMayHaveParts)
{
    auto& tree = Add<QTreeView>("Tree");
    QStandardItemModel model(2, 1);
    tree.setModel(&model);
    tree.setProperty(kRecItemSubIndex, 4);
    int part = -1;
    main.show();
    const auto partAt = [&](const QPoint& at) {
        const QRect rect = tree.visualRect(model.index(1, 0));
        return (at.x() - rect.x()) * 4 / rect.width();
    };
    const auto& events = Record([&] {
        const QRect rect = tree.visualRect(model.index(1, 0));
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {},
                          {rect.x() + rect.width() * 5 / 8, rect.center().y()});
    });
    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events[0].target.extraIndex.substr(0, 13), "Item (1,0) #2");

    struct SWatch : QObject
    {
        std::function<void(const QPoint&)> seen;
        bool eventFilter(QObject*, QEvent* event) override
        {
            if (event->type() == QEvent::MouseButtonPress) {
                seen(static_cast<QMouseEvent*>(event)->pos());
            }
            return false;
        }
    } watch;
    watch.seen = [&](const QPoint& at) { part = partAt(at); };
    tree.viewport()->installEventFilter(&watch);
    for (const int width : {40, 1200}) { // of an item that is smaller, and larger than was recorded
        tree.header()->setStretchLastSection(false);
        tree.header()->resizeSection(0, width);
        main.resize(1300, 500);
        part = -1;
        EXPECT_TRUE(Play().Good());
        EXPECT_EQ(part, 2) << width;
    }
}

TEST_F(SteeringTest, AWidgetMayTellItsStateItself)
{
    auto& scale = Add<CScale>("Scale");
    scale.clicked = 7;
    EXPECT_EQ(StateOf(scale).toStdString(), "Scale: Enabled\n");
    scale.setProperty(kRecChkCustomContent, true);
    EXPECT_EQ(StateOf(scale).toStdString(), "Scale: 7\n");
    scale.setProperty(kRecChkCustomContent, QStringLiteral("fixed\nlines\n"));
    EXPECT_EQ(StateOf(scale).toStdString(), "fixed\nlines\n");
}

} // namespace
} // namespace zov::ui::replay

#include "SteeringTest.moc"
