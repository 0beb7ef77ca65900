#include "QmlScene.h"
#include "components/ColorPalette.h"
#include "components/Motion.h"
#include "components/SpringCurve.h"
#include "components/SymbolTable.h"

#include <QEasingCurve>
#include <QImage>
#include <QRawFont>
#include <QTest>

#include <cmath>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace brivane;

TEST(SymbolTable, EverySymbolIsFoundAndHasAGlyphInTheFontAndUnknownOnesStandOut)
{
    const QRawFont font(u":/brivane/fonts/MaterialIcons-Regular.ttf"_s, 16);
    const QString fallback = QChar(SymbolTable::fallbackGlyph);
    ASSERT_TRUE(font.isValid() && font.supportsCharacter(fallback.front()));
    for (const Symbol& symbol : SymbolTable::symbols()) {
        const QString name = QStringView(symbol.name).toString();
        EXPECT_EQ(SymbolTable::glyph(name), QString(QChar(symbol.glyph))) << qPrintable(name);
        EXPECT_TRUE(font.supportsCharacter(QChar(symbol.glyph))) << qPrintable(name);
    }
    for (const QString& name : {u""_s, u"a"_s, u"trash.fill.x"_s, u"zzz"_s})
        EXPECT_EQ(SymbolTable::glyph(name), fallback);
}

TEST(SpringCurve, EasingFollowsTheSpringAndEndsAtRest)
{
    for (const double damping : {0.5, 0.8, 1.0}) {
        const double response = 0.3;
        const QList<qreal> curve = SpringCurve::bezierCurve(response, damping);
        QEasingCurve easing(QEasingCurve::BezierSpline);
        for (qsizetype at = 0; at + 5 < curve.size(); at += 6) {
            easing.addCubicBezierSegment({curve[at], curve[at + 1]}, {curve[at + 2], curve[at + 3]},
                                         {curve[at + 4], curve[at + 5]});
        }
        const double total = SpringCurve::settlingTime(response, damping);
        for (double part = 0; part <= 1; part += 0.01) {
            EXPECT_NEAR(easing.valueForProgress(part),
                        SpringCurve::position(part * total, response, damping), 0.01)
                << "damping " << damping << " at " << part;
        }
        EXPECT_NEAR(SpringCurve::position(total * 1.1, response, damping), 1, 0.0011);
        EXPECT_EQ(easing.valueForProgress(1), 1);
    }
}

TEST(ColorPalette, TextOnAFilledPillStaysReadable)
{
    const auto luminance = [](const QColor& color) {
        const auto linear = [](float channel) {
            return channel <= 0.04045F ? channel / 12.92F
                                       : std::pow((channel + 0.055F) / 1.055F, 2.4F);
        };
        return 0.2126F * linear(color.redF()) + 0.7152F * linear(color.greenF()) +
               0.0722F * linear(color.blueF());
    };
    for (const QColor& ground :
         {ColorPalette::accent(), ColorPalette::danger(), ColorPalette::indigo(),
          ColorPalette::purple(), ColorPalette::yellow(), ColorPalette::cardBackground()}) {
        const float one = luminance(ground);
        const float other = luminance(ColorPalette::textOn(ground));
        EXPECT_GE((std::max(one, other) + 0.05F) / (std::min(one, other) + 0.05F), 4.5F)
            << qPrintable(ground.name());
    }
}

TEST(UsageBar, ColourChangesJustAboveEachThresholdAndTheFillStaysInside)
{
    QmlScene scene("UsageBar {}", {200, 4});
    const std::tuple<double, QColor, double> rows[] = {
        {-1, ColorPalette::accent(), 0},     {0.001, ColorPalette::accent(), 4},
        {0.75, ColorPalette::accent(), 150}, {0.76, ColorPalette::warning(), 152},
        {0.9, ColorPalette::warning(), 180}, {0.91, ColorPalette::danger(), 182},
        {3, ColorPalette::danger(), 200}};
    for (const auto& [fraction, color, width] : rows) {
        scene.root()->setProperty("fraction", fraction);
        EXPECT_EQ(scene.root()->property("color").value<QColor>(), color) << fraction;
        EXPECT_NEAR(scene.item(u"fill"_s)->width(), width, 0.01) << fraction;
    }
}

TEST(SegmentedPills, KeysMoveTheChoiceStopAtTheEndsAndShowNoneThatTheScreenRefuses)
{
    QmlScene scene("SegmentedPills { selection: 'b'; onActivated: value => { if (value !== 'd')"
                   " selection = value } options: ['a', 'b', 'c', 'd'].map(value =>"
                   " ({ value: value, label: value })) }");
    scene.focused(QString());
    const std::pair<Qt::Key, QString> rows[] = {{Qt::Key_Right, u"c"_s}, {Qt::Key_Right, u"c"_s},
                                                {Qt::Key_End, u"c"_s},   {Qt::Key_Home, u"a"_s},
                                                {Qt::Key_Left, u"a"_s},  {Qt::Key_Right, u"b"_s}};
    for (const auto& [key, choice] : rows) {
        scene.press(key);
        EXPECT_EQ(scene.root()->property("selection"), choice) << key;
    }
    for (const auto& [clicked, chosen] :
         {std::pair(u"pill0"_s, u"pill0"_s), {u"pill3"_s, u"pill0"_s}}) {
        scene.click(scene.item(clicked));
        for (const QString& pill : {u"pill0"_s, u"pill1"_s, u"pill3"_s})
            EXPECT_EQ(scene.item(pill)->property("chosen").toBool(), pill == chosen);
    }
}

TEST(NumericText, CountingPastAPowerOfTenLeavesNoStaleDigit)
{
    QmlScene scene("NumericText {}");
    for (const QString& text : {u"999"_s, u"1,000"_s, u"8.3 GB"_s, u"7"_s, u""_s}) {
        scene.root()->setProperty("text", text);
        QString shown;
        const QList<QQuickItem*> cells = scene.root()->childItems().constFirst()->childItems();
        for (QQuickItem* cell : cells)
            shown.prepend(cell->property("shown").toString());
        EXPECT_EQ(shown, text);
    }
    EXPECT_EQ(scene.warnings().join(u'\n'), QString());
}

TEST(NumericText, PlacesThatComeOrGoRollAsWell)
{
    Motion::instance().setEnabled(true);
    QmlScene scene("NumericText { text: '9' }");
    const auto rollingAt = [&](qsizetype place) {
        const QQuickItem* cell = scene.root()->childItems().constFirst()->childItems().value(place);
        return cell && cell->property("progress").toReal() < 1;
    };
    EXPECT_FALSE(rollingAt(0)) << "the first text is to be there at once";
    for (const QString& text : {u"10"_s, u"9"_s}) {
        const double before = scene.root()->implicitWidth();
        scene.root()->setProperty("text", text);
        EXPECT_TRUE(rollingAt(0) && rollingAt(1)) << qPrintable(text);
        EXPECT_NEAR(scene.root()->implicitWidth(), before, 1) << "what is beside it jumps";
        EXPECT_TRUE(QTest::qWaitFor([&] { return !rollingAt(0) && !rollingAt(1); }, 5000));
    }
    Motion::instance().setEnabled(false);
}

// With BRIVANE_PICTURES set to a folder, the page is kept there to be looked at.
TEST(Gallery, EveryComponentRendersAtRestAndInMotionWithoutAWarning)
{
    for (const bool moves : {true, false}) {
        brivane::Motion::instance().setEnabled(moves);
        QmlScene scene("Gallery { Item { Spring on x { from: 0; to: 1 } } }", {1200, 3000});
        scene.focused(u"capsuleButton"_s);
        const QImage picture = scene.view().grabWindow();
        EXPECT_FALSE(picture.isNull());
        EXPECT_EQ(scene.warnings().join(u'\n'), QString());
        const QString folder = qEnvironmentVariable("BRIVANE_PICTURES");
        EXPECT_TRUE(folder.isEmpty() || moves || picture.save(folder + u"/gallery.png"_s));
    }
}
