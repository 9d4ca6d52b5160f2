#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QRadioButton>
#include <memory>

#include "desktop/look/Paragraph.h"
#include "desktop/look/TextLine.h"
#include "desktop/machine/Gauge.h"
#include "desktop/parts/ElidedLabel.h"
#include "desktop/parts/ParagraphLabel.h"
#include "desktop/parts/QuestionDialog.h"
#include "desktop/parts/SegmentedPicker.h"
#include "desktop/processes/ProcessTableDelegate.h"
#include "desktop/projects/ShrinkingRow.h"
#include "tests/desktop/Pointer.h"
#include "tests/desktop/SampleScene.h"

namespace tolvane::desktop {
namespace {

class PartsTest : public ::testing::Test {
protected:
    PartsTest() { scene.look.install(); }
    SampleScene scene;
};

TEST_F(PartsTest, arrowKeysMoveThroughAPicker) {
    SegmentedPicker picker(scene.look, "Group", {"One", "Two", "Three"});
    picker.setChoice(0);
    picker.show();
    int chosen = -1;
    QObject::connect(&picker, &SegmentedPicker::chosen, &picker, [&](int index) { chosen = index; });
    auto* first = picker.findChildren<QRadioButton*>().front();
    turnLoop();
    first->setFocus();
    type(*first, Qt::Key_Right);
    EXPECT_EQ(chosen, 1);
    EXPECT_EQ(picker.choice(), 1);
}

TEST_F(PartsTest, screenReadersMeetRadioButtonsInAPicker) {
    SegmentedPicker picker(scene.look, "Group", {"One", "Two"});
    EXPECT_EQ(picker.accessibleName(), "Group");
    auto* segment = picker.findChildren<QRadioButton*>().front();
    const auto* spoken = QAccessible::queryAccessibleInterface(segment);
    ASSERT_NE(spoken, nullptr);
    EXPECT_EQ(spoken->role(), QAccessible::RadioButton);
}

TEST_F(PartsTest, choosingASegmentMovesNone) {
    SegmentedPicker picker(scene.look, "Group", {"One", "Two"});
    picker.setChoice(0);
    const auto before = picker.sizeHint();
    picker.setChoice(1);
    EXPECT_EQ(picker.sizeHint(), before);
}

TEST_F(PartsTest, gaugesStayWithinTheirTrack) {
    Gauge gauge(scene.look);
    gauge.show(7, lightTokens.green, {});
    EXPECT_EQ(gauge.fraction(), 1);
    gauge.show(-1, lightTokens.green, {});
    EXPECT_EQ(gauge.fraction(), 0);
}

TEST_F(PartsTest, labelsGiveWayWhenThereIsNoRoom) {
    ElidedLabel label(scene.look, TextRole::body, &Tokens::text);
    label.setText("a rather long text for a narrow place");
    label.resize(40, 18);
    EXPECT_TRUE(label.isElided());
    label.resize(label.sizeHint());
    EXPECT_FALSE(label.isElided());
}

TEST_F(PartsTest, whatGivesWayKeepsItsRoomFirst) {
    ShrinkingRow row;
    auto* title = new ElidedLabel(scene.look, TextRole::body, &Tokens::text);
    auto* mark = new ElidedLabel(scene.look, TextRole::body, &Tokens::text);
    title->setText(QString(200, 'm'));
    mark->setText("Branch deleted, safe to stop");
    row.add(title, 0, 0, 90);
    row.add(mark, 8, 1);
    row.resize(90 + 8 + mark->sizeHint().width(), 20);
    row.show();
    turnLoop();
    EXPECT_EQ(title->width(), 90);
    EXPECT_FALSE(mark->isElided());
    row.resize(150, 20);
    turnLoop();
    EXPECT_EQ(title->width(), 90);
    EXPECT_TRUE(mark->isElided());
}

TEST_F(PartsTest, aQuestionsIconStandsBesideItsWordsInEitherDirection) {
    const Question question{
        .title = "Force quit node?", .message = "Unsaved work will be lost.", .action = "Force Quit"};
    for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        QApplication::setLayoutDirection(direction);
        const std::unique_ptr<QuestionDialog> dialog(QuestionDialog::ask(scene.look, question, nullptr, "3 processes"));
        turnLoop();
        const auto labels = dialog->findChildren<ParagraphLabel*>();
        ASSERT_EQ(labels.size(), 3);
        constexpr int iconRoom = 20 + Sizes::questionIcon;
        const QRect icon(direction == Qt::LeftToRight ? 0 : dialog->width() - iconRoom, 0, iconRoom, dialog->height());
        for (const auto* label : labels) EXPECT_FALSE(label->geometry().intersects(icon));
        EXPECT_TRUE(dialog->accessibleDescription().endsWith("3 processes"));
    }
    QApplication::setLayoutDirection(Qt::LeftToRight);
}

TEST_F(PartsTest, paragraphsKeepTheLineHeightOfTheScale) {
    const auto& fonts = scene.look.fonts();
    const Paragraph narrow("one two three four five six seven eight", fonts, TextRole::body, 60);
    EXPECT_GT(narrow.lines(), 3);
    EXPECT_EQ(narrow.height(), narrow.lines() * fonts.lineHeight(TextRole::body));
}

TEST_F(PartsTest, aDetailIsWholeOrItsLastPartOrNothing) {
    const QFontMetrics metrics(scene.look.fonts().font(TextRole::small));
    const QString path("~/Developer/docs-site");
    const auto last = QChar(0x2026) + QStringLiteral("/docs-site");
    EXPECT_EQ(RowDetail::fitting(path, 1000, metrics).shown, path);
    EXPECT_TRUE(RowDetail::fitting(path, 1000, metrics).isWhole);
    EXPECT_EQ(RowDetail::fitting(path, metrics.horizontalAdvance(last), metrics).shown, last);
    EXPECT_EQ(RowDetail::fitting(path, 10, metrics).shown, "");
    EXPECT_EQ(RowDetail::fitting("5 processes", 20, metrics).shown, "");
    EXPECT_TRUE(RowDetail::fitting("", 0, metrics).isWhole);
}

TEST(TextLine, aNameStaysOnItsLine) {
    EXPECT_EQ(oneLine("tab\tnew\nline\x01"), "tab new line ");
    EXPECT_EQ(oneLine(QString::fromUtf8("שלום 🎉")), QString::fromUtf8("שלום 🎉"));
}

}  // namespace
}  // namespace tolvane::desktop
