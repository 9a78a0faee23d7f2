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
        box.context.languageFile = QStringLiteral("XX.txt");
        owner.setGeometry(100, 100, 600, 400);
        owner.show();
    }

    // What the user does when the box has come up; returns the box's answer.
    int ask(const QString& prompt, int style, const std::function<void()>& user, int seconds = 0)
    {
        QTimer::singleShot(0, &form, [&] {
            user();
            if (form.isVisible()) {
                ADD_FAILURE() << "the box did not close";
                form.accept();
            }
        });
        return form.MsgBox(prompt, style, QString(), &owner, seconds);
    }
    int ask(int style, const std::function<void()>& user, int seconds = 0)
    {
        return ask(QStringLiteral("It reads out from the KX?"), style, user, seconds);
    }

    QPushButton* button(int index) { return form.findChild<QPushButton*>(QStringLiteral("cmdCommand_%1").arg(index)); }
    QLabel* label() { return form.findChild<QLabel*>(QStringLiteral("lblMessage")); }
    TestMachine box;
    clsLibrary library{box.context};
    QWidget owner;
    frmMessageBox form{library};
};

struct Answer
{
    const char* name;
    int style;
    std::function<void(QWidget& form, QPushButton* focused)> user;
    int result;
};

const auto kEscape = [](QWidget& form, QPushButton*) { QTest::keyClick(&form, Qt::Key_Escape); };
const auto kClose = [](QWidget& form, QPushButton*) { form.close(); };
const auto kEnter = [](QWidget& form, QPushButton*) { QTest::keyClick(&form, Qt::Key_Return); };
const auto kFocused = [](QWidget&, QPushButton* focused) {
    if (focused != nullptr)
        QTest::keyClick(focused, Qt::Key_Space);
};

std::function<void(QWidget& form, QPushButton*)> click(int index)
{
    return [index](QWidget& form, QPushButton*) {
        auto* button = form.findChild<QPushButton*>(QStringLiteral("cmdCommand_%1").arg(index));
        QTest::mouseClick(button, Qt::LeftButton);
    };
}

TEST_F(MessageBox, AnswerIsTheButtonsCode)
{
    for (const Answer& row :
         {Answer{"Yes", 4 + 32 + 256, click(0), 6}, Answer{"Third", 2, click(2), 5},
          Answer{"EnterTakesTheDefault", 4 + 256, kEnter, 7}, Answer{"SpaceTakesTheDefault", 3 + 512, kFocused, 2},
          Answer{"EscapeSaysNo", 4, kEscape, 7}, Answer{"EscapeFromANotice", 16, kEscape, 1},
          Answer{"CloseButtonSaysNo", 4 + 48, kClose, 7}}) {
        SCOPED_TRACE(row.name);
        const int result =
            ask(row.style, [this, &row] { row.user(form, qobject_cast<QPushButton*>(form.focusWidget())); });
        EXPECT_EQ(result, row.result);
    }
}

TEST_F(MessageBox, TextsComeFromTheLanguageFile)
{
    box.put(QStringLiteral("C:\\Vorlant\\Lang\\XX.txt"), "[Language]\r\nYes=はい(&Y)\r\nNo=いいえ(&N)\r\n");
    ask(QStringLiteral("Weiter?vbCrLf<b>\x1b\u202E"), 4, [this] {
        EXPECT_EQ(button(0)->text(), QStringLiteral("はい(&Y)"));
        EXPECT_EQ(button(1)->text(), QStringLiteral("いいえ(&N)"));
        EXPECT_EQ(label()->text(), QStringLiteral("Weiter?\n<b>\\x1b<U+202E>")) << "the caller translates the prompt";
        EXPECT_EQ(label()->textFormat(), Qt::PlainText);
        EXPECT_EQ(form.windowTitle(), u"Vorlant");
        form.reject();
    });
    EXPECT_TRUE(box.content(QStringLiteral("C:\\Vorlant\\Lang\\XX.txt")).contains("frmMessageBox-cmdCommand-2="));
}

TEST_F(MessageBox, IsSetUpAnewForEachMessage)
{
    ask(2, [this] {
        EXPECT_TRUE(button(2)->isVisible());
        EXPECT_NEAR(button(1)->x() - button(0)->x(), 1600 / 15, 1);
        EXPECT_NEAR(button(2)->x() - button(0)->x(), 3200 / 15, 1);
        QTest::mouseClick(button(2), Qt::LeftButton);
    });
    const int result = ask(QString(20, u'\n'), 64, [this] {
        EXPECT_TRUE(button(0)->isVisible());
        EXPECT_FALSE(button(1)->isVisible());
        EXPECT_FALSE(button(2)->isVisible());
        EXPECT_GT(button(0)->y(), 300);
        form.close();
    });
    EXPECT_EQ(result, 1) << "not the button of the message before";
    ask(0, [this] {
        EXPECT_EQ(button(0)->y(), 72) << "low again";
        form.accept();
    });
}

TEST_F(MessageBox, ClosesItselfWithItsDefaultButton)
{
    bool early = false;
    const int result = ask(
        4 + 256,
        [&] {
            box.clock.advance(4999);
            early = !form.isVisible();
            box.clock.advance(1);
        },
        5);
    EXPECT_FALSE(early);
    EXPECT_EQ(result, 7);
}

struct Prompt
{
    const char* name;
    QString text;
};

TEST_F(MessageBox, NothingIsCut)
{
    for (const Prompt& row :
         {Prompt{"Empty", QString()},
          Prompt{"OneLongLine", QStringLiteral("Please acquire the up-to-date data. ").repeated(30)},
          Prompt{"OneLongWord", QString(400, u'W')}, Prompt{"ManyLines", QStringLiteral("x\n").repeated(200)}}) {
        SCOPED_TRACE(row.name);
        box.put(QStringLiteral("C:\\Vorlant\\Lang\\XX.txt"),
                "[Language]\r\nStop=処理を途中で中止します(&S)\r\nDisregard=Ignorieren\r\n");
        ask(row.text, 2, [this] {
            const QRect room = form.screen()->availableGeometry();
            EXPECT_TRUE(room.contains(form.geometry())) << form.width() << "x" << form.height();
            EXPECT_GE(label()->height(), label()->heightForWidth(label()->width()));
            const QRect area = label()->parentWidget()->parentWidget()->geometry();
            for (int i = 0; i < 3; ++i) {
                EXPECT_TRUE(form.rect().contains(button(i)->geometry())) << i;
                EXPECT_GE(button(i)->width(), button(i)->sizeHint().width()) << i;
                EXPECT_LE(area.bottom(), button(i)->y()) << i;
                EXPECT_TRUE(i == 0 || button(i)->x() > button(i - 1)->geometry().right()) << i;
            }
            form.reject();
        });
    }
}

TEST_F(MessageBox, PresenterAsksOverItsWindowAndWhileABoxIsOpen)
{
    MessageBoxPresenter presenter(library, &owner);
    int inner = 0;
    QTimer::singleShot(0, &owner, [&] {
        QWidget* outer = QApplication::activeModalWidget();
        ASSERT_NE(outer, nullptr);
        EXPECT_EQ(outer->x() - owner.x(), (owner.width() - outer->width()) / 2);
        EXPECT_EQ(outer->y() - owner.y(), (owner.height() - outer->height()) / 3);
        QTimer::singleShot(0, &owner, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
        inner = presenter.showMessage(QStringLiteral("Quit?"), MessageStyle::kYesNo);
        EXPECT_TRUE(outer->isVisible());
        QTest::keyClick(outer, Qt::Key_Return);
    });
    EXPECT_EQ(presenter.showMessage(QStringLiteral("Failed."), MessageStyle::kCritical), MessageResult::kOk);
    EXPECT_EQ(inner, MessageResult::kNo);
}

} // namespace
