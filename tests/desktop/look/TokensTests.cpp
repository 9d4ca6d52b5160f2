#include "desktop/look/Tokens.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "desktop/look/Appearance.h"
#include "desktop/look/Palette.h"

namespace tolvane::desktop {
namespace {

double linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(QColor colour) {
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

/// The contrast ratio of WCAG 2, from 1 to 21.
double contrast(QColor a, QColor b) {
    const double first = luminance(a), second = luminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

double leastContrast(QColor colour, const std::vector<QColor>& grounds) {
    double least = 21;
    for (const auto& ground : grounds) least = std::min(least, contrast(colour, ground));
    return least;
}

std::vector<QColor> grounds(const Tokens& tokens) {
    return {tokens.window, tokens.content, tokens.card, tokens.sidebar, tokens.hover, tokens.control};
}

constexpr double forText = 4.5, forMarks = 3.0;

struct Scheme {
    std::string name;
    Tokens tokens;
};

class EveryScheme : public ::testing::TestWithParam<Scheme> {
protected:
    const Tokens& tokens() const { return GetParam().tokens; }
};

TEST_P(EveryScheme, wordsCanBeReadOnEveryGround) {
    for (const auto& colour : {tokens().text, tokens().text2, tokens().text3, tokens().accent, tokens().greenText,
                               tokens().yellowText, tokens().orangeText, tokens().redText}) {
        EXPECT_GE(leastContrast(colour, grounds(tokens())), forText) << colour.name().toStdString();
    }
}

TEST_P(EveryScheme, selectedRowsStayReadable) {
    for (const auto& selection : {tokens().selection, tokens().selectionIdle}) {
        EXPECT_GE(contrast(tokens().text, selection), forText);
        EXPECT_GE(contrast(tokens().text2, selection), forText);
    }
}

TEST_P(EveryScheme, filledButtonsCarryReadableWords) {
    EXPECT_GE(contrast(tokens().onAccent, tokens().accentFill), forText);
    EXPECT_GE(contrast(tokens().onAccent, tokens().destructiveFill), forText);
}

TEST_P(EveryScheme, tagsCarryReadableWords) {
    EXPECT_GE(contrast(tokens().text2, tokens().tagPlain), forText);
    EXPECT_GE(contrast(tokens().greenText, tokens().tagGreen), forText);
    EXPECT_GE(contrast(tokens().orangeText, tokens().tagOrange), forText);
}

TEST_P(EveryScheme, badgesCarryReadableFigures) {
    const auto badge = laidOver(tokens().sidebar, tokens().text, tokens().badgeOpacity);
    EXPECT_GE(contrast(tokens().text2, badge), forText);
}

TEST_P(EveryScheme, marksStandOutFromTheGroundAndTheTrack) {
    for (const auto& ground : {tokens().window, tokens().content, tokens().well}) {
        for (const auto& mark : {tokens().green, tokens().orange, tokens().red, tokens().yellowEdge, tokens().used,
                                 tokens().compressed, tokens().swap, tokens().efficiency, tokens().performance}) {
            EXPECT_GE(contrast(mark, ground), forMarks) << mark.name().toStdString() << ground.name().toStdString();
        }
    }
}

TEST_P(EveryScheme, edgesOfFieldsCanBeSeen) {
    for (const auto& ground : {tokens().window, tokens().content, tokens().card, tokens().control, tokens().well}) {
        EXPECT_GE(contrast(tokens().borderStrong, ground), forMarks) << ground.name().toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Tokens, EveryScheme,
                         ::testing::Values(Scheme{"light", lightTokens}, Scheme{"dark", darkTokens},
                                           Scheme{"lightContrast", withHighContrast(lightTokens)},
                                           Scheme{"darkContrast", withHighContrast(darkTokens)}),
                         [](const auto& each) { return each.param.name; });

struct Promise {
    QColor Tokens::* colour;
    double light, dark;
};

/// The lowest ratio over all backgrounds that the scheme was designed for, to one decimal.
TEST(Tokens, keepTheContrastTheyWereDesignedFor) {
    const std::vector<Promise> promises = {{&Tokens::text, 14.5, 10.3},
                                           {&Tokens::text2, 5.9, 5.6},
                                           {&Tokens::text3, 4.6, 4.5},
                                           {&Tokens::accent, 5.0, 5.0}};
    for (const auto& each : promises) {
        EXPECT_GE(leastContrast(lightTokens.*each.colour, grounds(lightTokens)), each.light - 0.05);
        EXPECT_GE(leastContrast(darkTokens.*each.colour, grounds(darkTokens)), each.dark - 0.05);
    }
}

TEST(Tokens, thirdTextWouldBeTooFaintOnASelection) {
    EXPECT_LT(contrast(lightTokens.text3, lightTokens.selection), forText);
}

TEST(Tokens, lightYellowNeedsItsEdge) { EXPECT_LT(contrast(lightTokens.yellow, lightTokens.window), forMarks); }

TEST(Tokens, whiteLettersStandOnEveryTile) {
    for (const auto& ground : tileGrounds)
        EXPECT_GE(contrast(tileLetter, ground), forText) << ground.name().toStdString();
}

TEST(Appearance, highContrastRaisesTextAndEdges) {
    const auto tokens = Appearance{.dark = true, .highContrast = true}.tokens();
    EXPECT_EQ(tokens.text3, darkTokens.text);
    EXPECT_EQ(tokens.hairline, darkTokens.borderStrong);
    EXPECT_TRUE(tokens.outlinesSelection);
    EXPECT_FALSE(Appearance{.dark = true}.tokens().outlinesSelection);
}

TEST(Palette, windowsWithoutFocusHaveAPalerSelection) {
    const auto colours = palette(lightTokens);
    EXPECT_EQ(colours.color(QPalette::Active, QPalette::Highlight), lightTokens.selection);
    EXPECT_EQ(colours.color(QPalette::Inactive, QPalette::Highlight), lightTokens.selectionIdle);
    EXPECT_EQ(colours.color(QPalette::HighlightedText), lightTokens.text);
    EXPECT_EQ(colours.color(QPalette::Disabled, QPalette::Text), lightTokens.disabled);
}

}  // namespace
}  // namespace tolvane::desktop
