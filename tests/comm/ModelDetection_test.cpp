#include "ModelDetection.h"

#include "DetectionFixture.h"
#include "ModelCodes.h"
#include "Table.h"

#include <QCoreApplication>

#include <tuple>

namespace {

const char* const kDetected = "KX62000000-10A";
const char* const kOther = "ABCDEFGHIJKLMN";
const char* const kOld = "KX41000000-10A";
const QStringList kCodes{QStringLiteral("KX410"), QStringLiteral("KX413"), QStringLiteral("KX620")};

class Detecting : public DetectionFixture
{
protected:
    void start(const QString& commandLine = QString())
    {
        link = std::make_unique<uclComm>(ports, box.clock);
        link->init(1, &library);
        detection = std::make_unique<ModelDetection>(*link, library, commandLine);
        detection->Logs(errorLog, traceLog);
    }

    QByteArray bytesOf(const QString& answer) const { return box.machine.codePage.fromText(answer); }

    std::unique_ptr<uclComm> link;
    std::unique_ptr<ModelDetection> detection;
};

TEST_F(Detecting, EndsAsTheTableSays)
{
    for (const QStringList& row : tableRows("comm/conversations.tsv")) {
        SCOPED_TRACE(row[0].toStdString());
        plug(bytesOf(row[2]), bytesOf(row[3]));
        start();
        detection->setModelString(row[1]);
        const Detection ended = detection->detect(1, 0, kCodes);
        EXPECT_EQ(QString::number(static_cast<int>(ended.result)), row[4]);
        EXPECT_EQ(QString::number(ended.position), row[5]);
        EXPECT_EQ(detection->modelString().toStdString(), row[6].toStdString());
        EXPECT_EQ(QString::number(controller->requests()), row[7]);
        EXPECT_FALSE(detection->isBusy());
        EXPECT_EQ(detection->failure().isEmpty(), ended.result != DetectionResult::NoAnswer);
    }
}

TEST_F(Detecting, StopEndsTheWaitAtOnceAndALateReplyIsDropped)
{
    plug([this](const QByteArray& request) {
        QTimer::singleShot(0, &pulse, [this] { detection->stop(); });
        return controller->requests() == 1 ? QByteArray() : answer(request, kDetected);
    });
    start();
    detection->setModelString(QString::fromLatin1(kOld));
    const QDateTime before = box.clock.now();
    EXPECT_EQ(detection->detect(1, 0, kCodes).result, DetectionResult::Stopped);
    EXPECT_EQ(box.clock.now(), before) << "not the time-out";
    controller->send(answer(QByteArray::fromHex("0142"), kDetected));
    for (int i = 0; i < 5; ++i)
        QCoreApplication::processEvents();
    EXPECT_EQ(detection->modelString().toStdString(), kOld);
}

// The reply that a question of long ago did not get is not waited for, however the ones since then begin.
TEST_F(Detecting, AnOldSilenceDelaysNothing)
{
    plug([this](const QByteArray& request) {
        const bool isSecond = soundController::asksFor(request, "0000FBC8");
        return answer(request, controller->requests() == 1 ? kSilent : isSecond ? kDetected : kOther);
    });
    start();
    ASSERT_EQ(detection->detect(1, 0, kCodes).result, DetectionResult::NoAnswer);
    box.clock.advance(600000);
    QTimer::singleShot(2000, &pulse, [this] { detection->stop(); }); // nothing else would end a wait
    EXPECT_EQ(detection->detect(1, 0, kCodes).result, DetectionResult::Found);
}

TEST_F(Detecting, TheEndOfTheProgramEndsTheWait)
{
    plug([](const QByteArray&) {
        QCoreApplication::quit();
        return QByteArray();
    });
    start();
    Detection ended{DetectionResult::Found, 0};
    QTimer::singleShot(0, &pulse, [&] { ended = detection->detect(1, 0, kCodes); });
    QCoreApplication::exec();
    EXPECT_EQ(ended.result, DetectionResult::Stopped);
}

TEST_F(Detecting, ASecondDetectionInsideTheFirstIsRefused)
{
    Detection inner{DetectionResult::Found, 0};
    plug([this, &inner](const QByteArray& request) {
        inner = detection->detect(1, 0, kCodes);
        return answer(request, kDetected);
    });
    start();
    EXPECT_EQ(detection->detect(1, 0, kCodes).result, DetectionResult::Found);
    EXPECT_EQ(inner.result, DetectionResult::Stopped);
    EXPECT_EQ(controller->requests(), 1);
}

TEST(ModelCodes, SelectTheFirstEntryThatBeginsAlike)
{
    using M = modelcodes::Match;
    const QStringList codes{QStringLiteral("KX410"), QStringLiteral("KX620A"), QStringLiteral("KX620B"),
                            QStringLiteral("KX6")};
    const std::tuple<const char*, M, int> rows[] = {{"KX62000000-10A", M::Found, 1}, // by its first five characters
                                                    {"KX64000000-10A", M::NotFound, -1},
                                                    {"KX41000000-10", M::NotFound, -1}, // 13 characters
                                                    {"Nothing", M::NoAnswer, -1}};
    for (const auto& [text, match, position] : rows) {
        const modelcodes::Selection selection = modelcodes::select(QString::fromLatin1(text), codes);
        EXPECT_EQ(selection.match, match) << text;
        EXPECT_EQ(selection.position, position) << text;
    }
}

TEST_F(Detecting, BadSlaveNumberSendsNothing)
{
    plug(kDetected);
    start();
    EXPECT_FALSE(detection->getModelFromKX(248, QStringLiteral("&hFBC0")));
    EXPECT_EQ(controller->requests(), 0);
    EXPECT_TRUE(box.content(QStringLiteral("C:\\Vorlant\\Log\\Err.log"))
                    .contains("[KXCommSetFormError]clsModBus::SlaveAddress"));
}

} // namespace
