#include "frmMessageBox.h"

#include "MessageBoxPresenter.h"
#include "TestMachine.h"
#include "clsLibrary.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include <functional>

namespace {

class MessageBox : public ::testing::Test
{
protected:
    MessageBox()
    {
        box.context.languageFile = "XX.txt";
        box.put("C:\\Vorlant\\Lang\\XX.txt", "[Language]\r\nStop=処理を途中で中止します(&S)\r\nYes=はい(&Y)\r\n");
        owner.setGeometry(100, 100, 600, 400);
        owner.show();
    }

    // user: what is done when the box has come up; returns the box's answer.
    int ask(const QString& prompt, int style, const std::function<void()>& user, int seconds = 0)
    {
        QTimer::singleShot(0, &form, [&] {
            user();
            EXPECT_FALSE(form.isVisible()) << "the box did not close";
            form.accept();
        });
        return form.MsgBox(prompt, style, QString(), &owner, seconds);
    }

    QPushButton* button(int index) { return form.findChild<QPushButton*>(QString("cmdCommand_%1").arg(index)); }

    TestMachine box;
    clsLibrary library{box.context};
    QWidget owner;
    frmMessageBox form{library};
    QLabel* label = form.findChild<QLabel*>("lblMessage");
};

TEST_F(MessageBox, AnswerIsTheButtonsCode)
{
    const auto key = [this](Qt::Key code) { return [this, code] { QTest::keyClick(form.focusWidget(), code); }; };
    const auto click = [this](int index) { return [this, index] { button(index)->click(); }; };
    const auto wait = [this] {
        box.clock.advance(4999);
        EXPECT_TRUE(form.isVisible());
        box.clock.advance(1);
    };
    const std::tuple<int, std::function<void()>, int> rows[] = {
        {4 + 32 + 256, click(0), 6},       // yes
        {2, click(2), 5},                  // the third
        {4 + 256, key(Qt::Key_Return), 7}, // the default
        {3 + 512, key(Qt::Key_Space), 2},  // the default has the focus
        {4, key(Qt::Key_Escape), 7},       // no
        {16, key(Qt::Key_Escape), 1},      // of a notice
        {4 + 48, [this] { form.close(); }, 7},
        {4 + 256, wait, 7}, // the default
    };
    for (const auto& [style, user, result] : rows)
        EXPECT_EQ(ask("Weiter?", style, user, 5), result) << style;
}

TEST_F(MessageBox, NothingIsCutAndEachMessageIsSetUpAnew)
{
    const QString long20 = QString("Please acquire the up-to-date data. ").repeated(30);
    for (const QString& text : {QString(), long20, QString(400, 'W'), QString("x\n").repeated(200), QString("x")}) {
        ask(text, 2, [this] {
            EXPECT_TRUE(form.screen()->availableGeometry().contains(form.geometry()));
            EXPECT_GE(label->height(), label->heightForWidth(label->width()));
            const QRect area = label->parentWidget()->parentWidget()->geometry();
            int left = 0;
            for (int i = 0; i < 3; ++i) {
                const QRect place = button(i)->geometry();
                EXPECT_TRUE(button(i)->isVisible() && form.rect().contains(place)) << i;
                EXPECT_TRUE(place.width() >= button(i)->sizeHint().width() && place.x() > left) << i;
                EXPECT_LE(area.bottom(), place.y()) << i;
                left = place.right();
            }
            form.reject();
        });
    }
    ask("Weiter?vbCrLf<b>\x1b\u202E", 4, [this] {
        EXPECT_EQ(button(0)->text(), QString("はい(&Y)"));
        EXPECT_FALSE(button(2)->isVisible());
        EXPECT_EQ(button(0)->y(), 72) << "low again";
        EXPECT_EQ(label->text(), QString("Weiter?\n<b>\\x1b<U+202E>")) << "the caller translates the prompt";
        EXPECT_EQ(label->textFormat(), Qt::PlainText);
        EXPECT_EQ(form.windowTitle(), u"Vorlant");
        form.reject();
    });
}

TEST_F(MessageBox, PresenterAsksOverItsWindowAndWhileABoxIsOpen)
{
    MessageBoxPresenter presenter(library, &owner);
    int inner = 0;
    QTimer::singleShot(0, &owner, [&] {
        QWidget* outer = QApplication::activeModalWidget();
        ASSERT_NE(outer, nullptr);
        EXPECT_EQ(outer->pos() - owner.pos(),
                  QPoint((owner.width() - outer->width()) / 2, (owner.height() - outer->height()) / 3));
        QTimer::singleShot(0, &owner, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
        inner = presenter.showMessage("Quit?", MessageStyle::kYesNo);
        EXPECT_TRUE(outer->isVisible());
        QTest::keyClick(outer, Qt::Key_Return);
    });
    EXPECT_EQ(presenter.showMessage("Failed.", MessageStyle::kCritical), MessageResult::kOk);
    EXPECT_EQ(inner, MessageResult::kNo);
}

} // namespace
