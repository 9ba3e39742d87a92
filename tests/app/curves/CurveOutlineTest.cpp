// SPDX-License-Identifier: Apache-2.0
#include "app/curves/CurveOutline.h"

#include "app/curves/CurvePage.h"
#include "app/curves/EngineeringText.h"

#include <QElapsedTimer>
#include <QPainter>
#include <qwt_scale_map.h>
#include <qwt_transform.h>

#include <array>
#include <cmath>
#include <gtest/gtest.h>
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

TEST(CurveOutline, AMillionPointsAreRepaintedAtOnce)
{
    CCurvePage page;
    page.resize(1200, 800);
    auto curve = std::make_shared<curve::CCurve>();
    std::mt19937 random(1);
    for (std::size_t i = 0; i < 1000000; ++i) {
        const double x = static_cast<double>(i);
        curve->Points().Add(
            std::array{x, std::cos(x * 1e-4), static_cast<double>(random() % 1000) * 1e-4});
    }
    page.Add(curve, {}, {});
    QImage image(page.size(), QImage::Format_RGB32);
    page.render(&image);
    QElapsedTimer timer;
    timer.start();
    constexpr int kFrames = 20;
    for (int i = 0; i < kFrames; ++i) {
        page.Plot().MoveTo(page.Plot().Panned(page.Plot().Window(), {5, 0}));
        page.render(&image);
    }
    const double perFrame = static_cast<double>(timer.elapsed()) / kFrames;
    RecordProperty("ms_per_frame", std::to_string(perFrame));
    // Far above what it takes, so that a busy machine does not fail; drawing each point takes
    // seconds.
    EXPECT_LT(perFrame, 250.0);
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
