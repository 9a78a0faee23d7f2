#include "ModelDetection.h"

#include "DetectionFixture.h"
#include "Table.h"
#include "clsLog.h"

#include <QCoreApplication>

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
        detection->Logs(errorLog, noLog());
    }

    clsLog errorLog{box.machine};
    std::unique_ptr<uclComm> link;
    std::unique_ptr<ModelDetection> detection;
};

TEST_F(Detecting, EndsAsTheTableSays)
{
    for (const QStringList& row : tableRows("comm/conversations.tsv")) {
        SCOPED_TRACE(row[0].toStdString());
        const platform::CodePage& codePage = box.machine.codePage;
        plug(codePage.fromText(row[2]), codePage.fromText(row[3]));
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

TEST_F(Detecting, StopAndTheEndOfTheProgramEndTheWaitAtOnce)
{
    for (const bool isStop : {true, false}) {
        plug([this, isStop](const QByteArray&) {
            QTimer::singleShot(0, &pulse, [this, isStop] { isStop ? detection->stop() : QCoreApplication::quit(); });
            return QByteArray();
        });
        start();
        detection->setModelString(QString::fromLatin1(kOld));
        const QDateTime before = box.clock.now();
        Detection ended{DetectionResult::Found, 0};
        QTimer::singleShot(0, &pulse, [&] {
            ended = detection->detect(1, 0, kCodes);
            QCoreApplication::quit();
        });
        QCoreApplication::exec();
        EXPECT_EQ(ended.result, DetectionResult::Stopped);
        EXPECT_EQ(box.clock.now(), before) << "not the time-out";
        controller->send(answer(QByteArray::fromHex("0142"), kDetected));
        settle();
        EXPECT_EQ(detection->modelString().toStdString(), kOld) << "a late reply is dropped";
    }
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
    idle.reset();
    box.clock.advance(600000);
    QTimer::singleShot(2000, &pulse, [this] { detection->stop(); }); // nothing else would end a wait
    EXPECT_EQ(detection->detect(1, 0, kCodes).result, DetectionResult::Found);
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

TEST_F(Detecting, BadSlaveNumberSendsNothing)
{
    plug(kDetected);
    errorLog.setLogPath(QStringLiteral("C:\\Vorlant\\Log"));
    errorLog.setLogFileName(QStringLiteral("Err.log"));
    start();
    EXPECT_FALSE(detection->getModelFromKX(248, QStringLiteral("&hFBC0")));
    EXPECT_EQ(controller->requests(), 0);
    EXPECT_TRUE(box.content(QStringLiteral("C:\\Vorlant\\Log\\Err.log"))
                    .contains("[KXCommSetFormError]clsModBus::SlaveAddress"));
}

} // namespace
