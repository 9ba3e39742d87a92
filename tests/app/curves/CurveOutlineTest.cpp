// SPDX-License-Identifier: Apache-2.0
#include "app/curves/CurveOutline.h"

#include "app/curves/CurvePage.h"
#include "app/curves/EngineeringText.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QImage>
#include <QPainter>
#include <qwt_plot_legenditem.h>
#include <qwt_scale_map.h>
#include <qwt_text.h>
#include <qwt_transform.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <random>

namespace zov::app {
namespace {

curve::TCurvePtr Ramp(std::size_t count)
{
    auto made = std::make_shared<curve::CCurve>();
    for (std::size_t i = 0; i < count; ++i) {
        made->Points().Add(
            std::array{static_cast<double>(i), std::sin(static_cast<double>(i) * 1e-3)});
    }
    return made;
}

QwtScaleMap Map(double s1, double s2, double p1, double p2, bool log = false)
{
    QwtScaleMap map;
    if (log) {
        map.setTransformation(new QwtLogTransform);
    }
    map.setPaintInterval(p1, p2);
    map.setScaleInterval(s1, s2);
    return map;
}

TEST(CurveOutline, NoPeakIsLost)
{
    constexpr std::size_t kCount = 40000;
    curve::TCurvePtr curve = Ramp(kCount);
    std::mt19937 random(7);
    for (int turn = 0; turn < 12; ++turn) {
        const std::size_t at = random() % kCount;
        curve::CCurve spiked = *curve;
        spiked.Points() = {};
        for (std::size_t i = 0; i < kCount; ++i) {
            const curve::SCurvePoint point = curve->Points().At(i);
            spiked.Points().Add(std::array{point.x, i == at ? 5.0
                                                    : i == kCount - 1 - at
                                                        ? -5.0
                                                        : point.values[0].real()});
        }
        const CCurveValues values(std::make_shared<curve::CCurve>(spiked), ECurveView::Real, {});
        for (const bool log : {false, true}) {
            const auto pieces = OutlineOf(values, Map(log ? 1 : 0, kCount, 0, 800, log),
                                          Map(-6, 6, 600, 0), {0, 0, 800, 600});
            ASSERT_EQ(pieces.size(), 1U);
            EXPECT_LE(pieces[0].size(), 800 * 4 + 4);
            if (at < 2 || at + 3 > kCount) {
                continue;
            }
            const QRectF bounds = pieces[0].boundingRect();
            EXPECT_NEAR(bounds.top(), 50, 1e-9) << at;
            EXPECT_NEAR(bounds.bottom(), 550, 1e-9) << at;
        }
    }
}

TEST(CurveOutline, DipsAmongValuesThatALogarithmicAxisLacksAreDrawn)
{
    constexpr std::size_t kCount = 40000;
    for (const std::size_t dip : {20001U, 20032U, 39000U}) {
        auto curve = std::make_shared<curve::CCurve>();
        for (std::size_t i = 0; i < kCount; ++i) {
            curve->Points().Add(std::array{static_cast<double>(i), i == dip     ? 1e-6
                                                                   : i % 3 == 0 ? -1.0
                                                                                : 2.0});
        }
        const CCurveValues values(curve, ECurveView::Real, {});
        EXPECT_EQ(values.LeastPositiveY(), 1e-6);
        double lowest = 0;
        for (const QPolygonF& piece : OutlineOf(values, Map(0, kCount, 0, 800),
                                                Map(1e-7, 10, 600, 0, true), {0, 0, 800, 600})) {
            lowest = std::max(lowest, piece.boundingRect().bottom());
        }
        EXPECT_NEAR(lowest, 525.0, 1e-6) << dip;
    }
}

TEST(CurveOutline, RangesAreThoseOfEachPoint)
{
    const CCurveValues values(Ramp(20000), ECurveView::Real, {});
    std::mt19937 random(3);
    for (int turn = 0; turn < 200; ++turn) {
        std::size_t begin = random() % 20001;
        std::size_t end = random() % 20001;
        if (begin > end) {
            std::swap(begin, end);
        }
        SValueRange plain;
        for (std::size_t i = begin; i < end; ++i) {
            plain.Include(values.Y(i));
        }
        const SValueRange range = values.RangeOf(begin, end);
        EXPECT_EQ(range.low, plain.low) << begin << ' ' << end;
        EXPECT_EQ(range.high, plain.high) << begin << ' ' << end;
    }
}

TEST(CurveOutline, WhatIsNoNumberPartsTheLine)
{
    auto curve = std::make_shared<curve::CCurve>();
    for (const double y : {1.0, 2.0, std::nan(""), 3.0, -4.0, 5.0}) {
        curve->Points().Add(std::array{static_cast<double>(curve->Points().Count()), y});
    }
    const CCurveValues values(curve, ECurveView::Real, {});
    const QRectF area(0, 0, 100, 100);
    EXPECT_EQ(OutlineOf(values, Map(0, 5, 0, 100), Map(-5, 5, 100, 0), area).size(), 2U);
    EXPECT_EQ(OutlineOf(values, Map(0, 5, 0, 100), Map(0.1, 10, 100, 0, true), area).size(), 3U);
}

TEST(CurveOutline, SmithOfImpedances)
{
    auto curve = std::make_shared<curve::CCurve>();
    curve->Points().Add(std::array{1e6, 50.0, 0.0});
    curve->Points().Add(std::array{2e6, 0.0, 50.0});
    const CCurveValues values(curve, ECurveView::Smith, curve::EUnitClass::Ohm);
    EXPECT_NEAR(values.At(0).x, 0.0, 1e-15);
    EXPECT_NEAR(values.At(1).y, 1.0, 1e-15);
}

TEST(CurveOutline, LinesKeepTheirDirectionHoweverFarTheyLead)
{
    auto curve = std::make_shared<curve::CCurve>();
    curve->Points().Add(std::array{0.0, 0.0});
    curve->Points().Add(std::array{1e9, 1e3});
    const CCurveValues values(curve, ECurveView::Real, {});
    // A millionth of the line, and a part of the plane that it does not cross.
    const QRectF area(0, 0, 800, 600);
    const auto pieces =
        OutlineOf(values, Map(5e8, 5e8 + 1e3, 0, 800), Map(500, 500 + 1e-3, 600, 0), area);
    ASSERT_EQ(pieces.size(), 1U);
    ASSERT_EQ(pieces[0].size(), 2);
    const QPointF way = pieces[0][1] - pieces[0][0];
    EXPECT_NEAR(way.y() / way.x(), -600.0 / 800.0, 1e-6);
    EXPECT_NEAR(pieces[0][0].y() - 600 + pieces[0][0].x() * 0.75, 0.0, 1e-3);
    EXPECT_TRUE(area.adjusted(-200, -200, 200, 200).contains(pieces[0][1]));
    EXPECT_TRUE(OutlineOf(values, Map(5e8, 5e8 + 1e3, 0, 800), Map(0, 1e-3, 600, 0), area).empty());
}

/// Points on a spiral in the plane of reflections, one of them far off its neighbours.
curve::TCurvePtr Spiral(std::size_t count, std::size_t peak)
{
    auto made = std::make_shared<curve::CCurve>();
    for (std::size_t i = 0; i < count; ++i) {
        const double part = static_cast<double>(i) / static_cast<double>(count);
        const double radius = i == peak ? 1.0 : 0.9 * part;
        made->Points().Add(
            std::array{part, radius * std::cos(part * 300), radius * std::sin(part * 300)});
    }
    return made;
}

TEST(CurveOutline, PeaksOfTheSmithViewAreDrawn)
{
    constexpr std::size_t kCount = 100000;
    std::mt19937 random(11);
    for (int turn = 0; turn < 12; ++turn) {
        const std::size_t peak = random() % kCount;
        const CCurveValues values(Spiral(kCount, peak), ECurveView::Smith, {});
        const SDrawnPoint at = values.At(peak);
        // All of it, and a part around the peak in which each point is drawn.
        for (const double half : {1.0, 1e-3}) {
            const QwtScaleMap x = Map(at.x - half, at.x + half, 0, 800);
            const QwtScaleMap y = Map(at.y - half, at.y + half, 600, 0);
            std::size_t drawn = 0;
            double nearest = 1e9;
            for (const QPolygonF& piece : OutlineOf(values, x, y, {0, 0, 800, 600})) {
                drawn += static_cast<std::size_t>(piece.size());
                for (const QPointF& point : piece) {
                    nearest = std::min(nearest, std::hypot(point.x() - 400, point.y() - 300));
                }
            }
            EXPECT_LT(nearest, 1.5) << peak << ' ' << half;
            EXPECT_LT(drawn, kCount / 4);
        }
        EXPECT_EQ(values.Nearest(at, 1, 1), peak);
    }
}

TEST(CurveOutline, LoopsOfTheSmithViewStayRound)
{
    for (const std::size_t count : {6000U, 100000U, 600000U}) {
        auto curve = std::make_shared<curve::CCurve>();
        for (std::size_t i = 0; i < count; ++i) { // a turn in about 60 points
            const double angle = static_cast<double>(i) * 0.1047;
            curve->Points().Add(
                std::array{static_cast<double>(i), 0.8 * std::cos(angle), 0.8 * std::sin(angle)});
        }
        const CCurveValues values(curve, ECurveView::Smith, {});
        double least = 1e9;
        for (int degrees = 0; degrees < 360; degrees += 5) {
            const double way = degrees * 3.14159265 / 180;
            double most = 0;
            for (const QPolygonF& piece :
                 OutlineOf(values, Map(-1, 1, 0, 800), Map(-1, 1, 800, 0), {0, 0, 800, 800})) {
                for (const QPointF& point : piece) {
                    most = std::max(most, (point.x() - 400) * std::cos(way) -
                                              (point.y() - 400) * std::sin(way));
                }
            }
            least = std::min(least, most);
        }
        EXPECT_GT(least, count < 50000 ? 319.0 : 320 * 0.92) << count;
    }
}

TEST(CurveOutline, OddCurvesAreDrawn)
{
    const double nan = std::nan("");
    const double inf = std::numeric_limits<double>::infinity();
    struct SCase
    {
        const char* name;
        std::vector<std::array<double, 3>> points;
    };
    const SCase cases[] = {
        {"none", {}},
        {"one point", {{1e6, 1, 0}}},
        {"one point at 0", {{0, 0, 0}}},
        {"only nan", {{1, nan, nan}, {nan, 1, 1}}},
        {"inf", {{-inf, 1, 1}, {0, inf, 2}, {inf, -inf, 3}}},
        {"largest", {{-1e308, -1.7e308, 0}, {1e308, 1.7e308, 0}}},
        {"one x", {{5, 1, 0}, {5, 2, 0}, {5, -3, 0}}},
        {"one ulp", {{1e9, 1, 0}, {std::nextafter(1e9, 2e9), std::nextafter(1.0, 2.0), 0}}},
        {"falling", {{3, 1, 2}, {2, 1, 3}, {1, 5, 1}}},
        {"denormal", {{5e-324, 5e-324, 0}, {1e-323, 1e-322, 0}}},
        {"negative", {{-3, -1, 0}, {-2, -2, 0}}},
        {"zeros", {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}},
    };
    QImage image(640, 480, QImage::Format_RGB32);
    for (const SCase& one : cases) {
        auto curve = std::make_shared<curve::CCurve>();
        for (const auto& point : one.points) {
            curve->Points().Add(point);
        }
        CCurvePage page;
        page.resize(image.size());
        page.Add({curve}, curve::EUnitClass::Ohm, {});
        for (int turn = 0; turn < 24; ++turn) {
            page.SetView(static_cast<ECurveView>(turn % 6));
            page.Plot().SetLogX(turn % 4 > 1);
            page.Plot().SetLogY(turn % 2 == 1);
            page.render(&image);
            for (int step = 0; step < 8; ++step) { // far out, far in, and about
                const double factor = step < 4 ? 1e3 : 1e-4;
                page.Plot().ZoomTo(page.Plot().Scaled({300, 200}, factor, factor));
                page.Plot().MoveTo(page.Plot().Panned(page.Plot().Window(), {1e4, -1e4}));
                page.render(&image);
            }
            const SPlotWindow& window = page.Plot().Window();
            EXPECT_TRUE(std::isfinite(window.xLow + window.xHigh + window.yLow + window.yHigh))
                << one.name << ' ' << turn;
            const auto point = page.Plot().PointAt({300, 200}, 1e9);
            EXPECT_TRUE(!point || point->point < one.points.size()) << one.name;
            EXPECT_EQ(page.Plot().ReadOut({300, 200}).isEmpty(), turn % 6 == 5) << one.name;
        }
    }
}

TEST(CurveOutline, APointOnItsOwnIsSeen)
{
    auto curve = std::make_shared<curve::CCurve>();
    curve->Points().Add(std::array{1e6, 5.0});
    CCurvePage page;
    page.resize(640, 480);
    page.Plot().SetLegend(false);
    page.Add({curve}, {}, {});
    QImage image(page.size(), QImage::Format_RGB32);
    page.render(&image);
    int ofPoint = 0;
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            ofPoint += image.pixelColor(x, y) == page.Curves().At(0).color ? 1 : 0;
        }
    }
    EXPECT_GE(ofPoint, 9);
}

TEST(CurvePlot, TheLegendLeavesRoomForTheCurves)
{
    CCurvePage page;
    std::vector<curve::TCurvePtr> curves(30);
    for (curve::TCurvePtr& curve : curves) {
        curve = Ramp(3);
    }
    page.Add(curves, {}, {});
    for (int row = 0; row < 30; ++row) {
        ASSERT_TRUE(page.Curves().setData(page.Curves().index(row, 0),
                                          QStringLiteral("c%1").arg(row), Qt::EditRole));
    }
    page.resize(800, 600);
    QImage image(page.size(), QImage::Format_RGB32);
    const auto* legend = static_cast<const QwtPlotLegendItem*>(
        page.Plot().itemList(QwtPlotItem::Rtti_PlotLegend).front());
    // From top to bottom.
    const auto entries = [&] {
        page.render(&image);
        std::map<int, QString> byPlace;
        for (const QwtPlotItem* item : legend->plotItems()) {
            byPlace[legend->legendGeometries(item).front().top()] = item->title().text();
        }
        QStringList all;
        for (const auto& [place, title] : byPlace) {
            all += title;
        }
        return all.join(QLatin1Char(' '));
    };
    EXPECT_EQ(entries(), QStringLiteral("c0 c1 c2 c3 c4 c5 c6 c7 c8 c9 and 20 more"));
    for (int row = 5; row < 25; ++row) {
        page.Curves().SetShown(row, false);
    }
    EXPECT_EQ(entries(), QStringLiteral("c0 c1 c2 c3 c4 c25 c26 c27 c28 c29"));
    page.Curves().SetShown(5, true);
    EXPECT_EQ(entries(), QStringLiteral("c0 c1 c2 c3 c4 c5 c25 c26 c27 c28 and 1 more"));
    page.Remove(29);
    page.Remove(0);
    ASSERT_TRUE(page.Curves().setData(page.Curves().index(0, 0),
                                      QString(40, QLatin1Char('a')) + QStringLiteral(" S21"),
                                      Qt::EditRole));
    EXPECT_EQ(entries(), QString(15, QLatin1Char('a')) + QChar(0x2026) +
                             QString(12, QLatin1Char('a')) +
                             QStringLiteral(" S21 c2 c3 c4 c5 c25 c26 c27 c28"));
}

constexpr std::size_t kMillion = 1000000;

/// A noisy wave with a peak of a single point.
curve::TCurvePtr Million(std::size_t peak)
{
    auto made = std::make_shared<curve::CCurve>();
    std::mt19937 random(1);
    for (std::size_t i = 0; i < kMillion; ++i) {
        const double x = static_cast<double>(i + 1);
        const double noise = static_cast<double>(random() % 1000) * 1e-4;
        made->Points().Add(
            std::array{x, i == peak ? 0.95 : 0.5 * std::cos(x * 1e-4) + noise, noise});
    }
    return made;
}

double ThreadSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

TEST(ManyPoints, ComeIntoThePlotWithoutAStall)
{
    CCurvePage page;
    page.resize(1200, 800);
    page.show();
    const curve::TCurvePtr curves[] = {Million(10), Million(20), Million(30)};
    double worst = 0;
    const auto during = [&](const std::function<void()>& work) {
        const double begin = ThreadSeconds();
        work();
        worst = std::max(worst, ThreadSeconds() - begin);
    };
    const auto prepare = [&] {
        while (page.Plot().IsPreparing()) {
            during([] { QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents); });
        }
    };
    during([&] { page.Add({std::begin(curves), std::end(curves)}, {}, {}); });
    EXPECT_TRUE(page.Plot().IsPreparing());
    during([&] { page.SetView(ECurveView::Db); }); // before the first is there
    during([&] { page.Curves().SetShown(1, false); });
    prepare();
    EXPECT_LT(page.Plot().Window().xHigh - page.Plot().Window().xLow, 2 * kMillion);
    during([&] { page.SetView(ECurveView::Smith); });
    during([&] { page.Remove(0); });
    prepare();
    during([&] { page.SetView(ECurveView::Magnitude); });
    prepare();
    during([&] { page.SetView(ECurveView::Smith); });
    EXPECT_FALSE(page.Plot().IsPreparing()) << "seen before";
    RecordProperty("worst_seconds", std::to_string(worst));
    // Of the window's own time, so that a busy machine does not count.
    EXPECT_LT(worst, 0.1);
}

TEST(ManyPoints, WhatIsLookedAtStaysThroughAChangeOfView)
{
    CCurvePage page;
    page.resize(1200, 800);
    page.Add({Million(10)}, {}, {});
    page.Plot().WaitPrepared();
    SPlotWindow window = page.Plot().Window();
    window.xLow = 2e5;
    window.xHigh = 3e5;
    page.Plot().ZoomTo(window);
    page.SetView(ECurveView::Phase);
    page.SetView(ECurveView::Db);
    page.Plot().WaitPrepared();
    EXPECT_EQ(page.Plot().Window().xLow, 2e5);
    EXPECT_EQ(page.Plot().Window().xHigh, 3e5);
    EXPECT_LT(page.Plot().Window().yHigh, 30.0);
}

/// ZOV_MEASURE=1 prints how long a picture takes while a million points are panned and zoomed, and
/// the processor time of a picture, which tells more where others keep the machine busy.
TEST(ManyPoints, Measured)
{
    if (!qEnvironmentVariableIsSet("ZOV_MEASURE")) {
        GTEST_SKIP() << "set ZOV_MEASURE=1";
    }
    struct SCase
    {
        const char* name;
        ECurveView view;
        bool log;
        std::size_t curves;
    };
    const SCase cases[] = {{"magnitude", ECurveView::Magnitude, false, 1},
                           {"magnitude, log axes", ECurveView::Magnitude, true, 1},
                           {"dB", ECurveView::Db, false, 1},
                           {"Smith", ECurveView::Smith, false, 1},
                           {"magnitude", ECurveView::Magnitude, false, 5}};
    std::printf("%-24s %7s %12s %12s %12s %12s\n", "view", "curves", "pan median", "zoom median",
                "worst ms", "processor");
    for (const SCase& one : cases) {
        CCurvePage page;
        page.resize(1200, 800);
        constexpr std::size_t kPeak = kMillion / 2 + 777;
        std::vector<curve::TCurvePtr> curves;
        for (std::size_t i = 0; i < one.curves; ++i) {
            curves.push_back(Million(kPeak));
        }
        page.SetView(one.view);
        page.Add(curves, {}, {});
        page.Plot().SetLogX(one.log);
        page.Plot().SetLogY(one.log);
        page.Plot().WaitPrepared();
        QImage image(page.size(), QImage::Format_RGB32);
        page.render(&image);
        const CCurveValues values(curves[0], one.view, {});
        const SDrawnPoint peak = values.At(kPeak);
        double processor = 0; // of all pictures
        const auto show = [&](const SPlotWindow& window) {
            QElapsedTimer timer;
            timer.start();
            const double begin = ThreadSeconds();
            page.Plot().MoveTo(window);
            page.render(&image);
            processor += ThreadSeconds() - begin;
            const double ms = static_cast<double>(timer.nsecsElapsed()) * 1e-6;
            const QwtScaleMap x = page.Plot().canvasMap(QwtPlot::xBottom);
            const QwtScaleMap y = page.Plot().canvasMap(QwtPlot::yLeft);
            double nearest = 1e9;
            for (const QPolygonF& piece :
                 OutlineOf(values, x, y, page.Plot().canvas()->contentsRect())) {
                for (const QPointF& point : piece) {
                    nearest = std::min(nearest, std::hypot(point.x() - x.transform(peak.x),
                                                           point.y() - y.transform(peak.y)));
                }
            }
            const QPointF place(x.transform(peak.x), y.transform(peak.y));
            if (QRectF(page.Plot().canvas()->contentsRect()).contains(place)) {
                EXPECT_LT(nearest, 2.0) << one.name << ": the peak is hidden";
            }
            return ms;
        };
        std::vector<double> pans;
        std::vector<double> zooms;
        for (int i = 0; i < 50; ++i) {
            pans.push_back(
                show(page.Plot().Panned(page.Plot().Window(), {i < 25 ? 6.0 : -6.0, 0})));
        }
        for (int i = 0; i < 60; ++i) {
            const QPointF about(page.Plot().transform(QwtPlot::xBottom, peak.x),
                                page.Plot().transform(QwtPlot::yLeft, peak.y));
            const double factor = i < 30 ? 0.8 : 1.25;
            zooms.push_back(show(page.Plot().Scaled(about, factor, factor)));
        }
        const double worst =
            std::max(*std::ranges::max_element(pans), *std::ranges::max_element(zooms));
        std::ranges::nth_element(pans, pans.begin() + 25);
        std::ranges::nth_element(zooms, zooms.begin() + 30);
        std::printf("%-24s %7zu %12.2f %12.2f %12.2f %12.2f\n", one.name, one.curves, pans[25],
                    zooms[30], worst,
                    processor * 1e3 / static_cast<double>(pans.size() + zooms.size()));
    }
}

TEST(EngineeringText, Table)
{
    const struct
    {
        double value;
        const char* unit;
        const char* text;
    } cases[] = {{0, "V", "0 V"},
                 {1e6, "Hz", "1 MHz"},
                 {4.7e-9, "H", "4.7 nH"},
                 {999999.9, "", "1 M"},
                 {-0.0031, "A", "-3.1 mA"},
                 {1e-15, "F", "1 fF"},
                 {1.5e20, "V", "1.5e+20 V"},
                 {-0.25, "dB", "-0.25 dB"},
                 {12, "", "12"}};
    for (const auto& one : cases) {
        EXPECT_EQ(EngineeringText(one.value, QLatin1String(one.unit)), QLatin1String(one.text));
    }
}

} // namespace
} // namespace zov::app
