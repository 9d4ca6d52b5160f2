#include <gtest/gtest.h>

#include <QApplication>
#include <QFontMetrics>
#include <QToolTip>

#include "desktop/look/MenuText.h"
#include "desktop/look/Paragraph.h"
#include "desktop/look/Tip.h"
#include "desktop/parts/ParagraphLabel.h"
#include "tests/desktop/SampleScene.h"

namespace tolvane::desktop {
namespace {

/// Makes windows right-to-left during its lifetime.
class Mirrored {
public:
    Mirrored() { QApplication::setLayoutDirection(Qt::RightToLeft); }
    ~Mirrored() { QApplication::setLayoutDirection(Qt::LeftToRight); }
    Mirrored(const Mirrored&) = delete;
    Mirrored& operator=(const Mirrored&) = delete;
};

TEST(Tip, aShortTextStaysAsItIs) {
    EXPECT_EQ(tip("Quit"), "Quit");
    EXPECT_EQ(tip(""), "");
    EXPECT_EQ(tip("node\n…/docs-site"), QString::fromUtf8("node\n…/docs-site"));
}

TEST(Tip, aTextThatLooksLikeMarkupIsShownAsItStands) {
    const auto shown = tip("<b>not bold</b>");
    EXPECT_TRUE(shown.contains("&lt;b&gt;not bold&lt;/b&gt;"));
}

TEST(Tip, aLongTextIsBrokenIntoLinesThatFitOnAScreen) {
    for (const auto& part : {QStringLiteral("m"), QStringLiteral("word "), QStringLiteral("/usr/lib")}) {
        const auto shown = tip(part.repeated(10'000 / static_cast<int>(part.size())));
        const QFontMetrics metrics(QToolTip::font());
        const auto lines = shown.split('\n');
        EXPECT_LE(lines.size(), 40);
        for (const auto& line : lines) EXPECT_LE(metrics.horizontalAdvance(line), 800);
    }
}

TEST(Tip, whatFitsIsWhole) {
    const auto text = QStringLiteral("--flag ").repeated(200).trimmed();
    EXPECT_EQ(tip(text).remove('\n').remove(' '), QString(text).remove(' '));
}

TEST(Tip, controlCharactersBecomeBlanks) { EXPECT_EQ(tip("tab\there\x07"), "tab here"); }

TEST(MenuWords, aNameIsNoMnemonicAndNeverWiderThanAMenu) {
    EXPECT_EQ(menuText("Quit Salt & Pepper"), "Quit Salt && Pepper");
    const auto shown = menuText("Quit " + QString(10'000, 'm'));
    EXPECT_LE(shown.size(), 90);
    EXPECT_TRUE(shown.contains(QChar(0x2026)));
    EXPECT_TRUE(shown.startsWith("Quit m"));
}

TEST(MenuWords, pairsThatMakeOneCharacterStayTogether) {
    const auto shown = menuText(QString::fromUtf8("🎉").repeated(100));
    EXPECT_EQ(shown, QString::fromUtf8(shown.toUtf8()));
}

TEST(MenuWords, dotsStayBehindInAMirroredWindow) {
    EXPECT_EQ(menuText("Export…"), "Export…");
    const Mirrored mirrored;
    const auto shown = menuText("Export…");
    EXPECT_EQ(shown.front(), QChar(0x2066));
    EXPECT_EQ(shown.back(), QChar(0x2069));
    EXPECT_EQ(menuText(QString::fromUtf8("تصدير…")), QString::fromUtf8("تصدير…"));
}

class LongParagraphTest : public ::testing::Test {
protected:
    SampleScene scene;
};

TEST_F(LongParagraphTest, givesUpItsMiddle) {
    const auto& fonts = scene.look.fonts();
    const auto text = "Force quit " + QString(10'000, 'm') + "?";
    const auto shown = Paragraph::withoutMiddle(text, fonts, TextRole::body, 300, 3);
    EXPECT_EQ(Paragraph(shown, fonts, TextRole::body, 300).lines(), 3);
    EXPECT_TRUE(shown.startsWith("Force quit mm"));
    EXPECT_TRUE(shown.endsWith("mm?"));
    EXPECT_EQ(Paragraph::withoutMiddle("Force quit node?", fonts, TextRole::body, 300, 3), "Force quit node?");
}

TEST_F(LongParagraphTest, keepsToItsLinesAndSpeaksTheWhole) {
    ParagraphLabel label(scene.look, TextRole::body, &Tokens::text);
    const QString text(10'000, 'm');
    label.setMostLines(4);
    label.setText(text);
    EXPECT_EQ(label.heightForWidth(300), 4 * scene.look.fonts().lineHeight(TextRole::body));
    EXPECT_EQ(label.accessibleName(), text);
}

/// The bounding box of everything drawn.
QRect inked(QWidget& widget) {
    const auto picture = widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
    QRect drawn;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, y) != picture.pixel(picture.width() / 2, 0)) drawn |= QRect(x, y, 1, 1);
        }
    }
    return drawn;
}

TEST_F(LongParagraphTest, aTextFromRightToLeftStandsWhereOthersStand) {
    ParagraphLabel label(scene.look, TextRole::body, &Tokens::text);
    label.setText(QString::fromUtf8("שרת פיתוח"));
    label.resize(400, 30);
    const auto leftToRight = inked(label);
    EXPECT_LT(leftToRight.left(), 10);
    EXPECT_GT(leftToRight.width(), 30);
    const Mirrored mirrored;
    const auto rightToLeft = inked(label);
    EXPECT_GT(rightToLeft.right(), 390);
    EXPECT_GT(rightToLeft.width(), 30);
}

}  // namespace
}  // namespace tolvane::desktop
