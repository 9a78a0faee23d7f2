#include "ModelDetection.h"

#include "DetectionFixture.h"
#include "ModelCodes.h"

#include <QCoreApplication>

namespace {

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

    std::unique_ptr<uclComm> link;
    std::unique_ptr<ModelDetection> detection;
};

struct Conversation
{
    const char* name;
    const char* known; // before
    const char* first; // at FBC0
    const char* second;
    DetectionResult result;
    int position;
    const char* modelString; // afterwards
    int requests;
};

class Conversing : public Detecting, public ::testing::WithParamInterface<Conversation>
{
public:
    static constexpr const char* kS = kSilent;
    static constexpr const char* kD = kDamaged;
    static constexpr const char* kE = kException;
    static constexpr const char* kF = kForeign;
};

TEST_P(Conversing, EndsAsItMust)
{
    const Conversation& row = GetParam();
    plug(row.first, row.second);
    start();
    detection->setModelString(QString::fromLatin1(row.known));
    const Detection ended = detection->detect(1, 0, kCodes);
    EXPECT_EQ(ended.result, row.result);
    EXPECT_EQ(ended.position, row.position);
    EXPECT_EQ(detection->modelString().toStdString(), row.modelString);
    EXPECT_EQ(controller->requests(), row.requests);
    EXPECT_FALSE(detection->isBusy());
    EXPECT_EQ(detection->failure().isEmpty(), row.result != DetectionResult::NoAnswer);
}

using R = DetectionResult;
const char* const kDetected = "KX62000000-10A";
const char* const kOther = "ABCDEFGHIJKLMN";
const char* const kOld = "KX41000000-10A";

INSTANTIATE_TEST_SUITE_P(
    All, Conversing,
    ::testing::Values(Conversation{"KnownAtFirst", "", kDetected, Conversing::kS, R::Found, 2, kDetected, 1},
                      Conversation{"KnownAtSecond", "", kOther, kDetected, R::Found, 2, kDetected, 2},
                      Conversation{"OtherCharacters", "", "KX620\xB1\xB2\xB3\xB4-10AB", Conversing::kS, R::Found, 2,
                                   "KX620\xEF\xBD\xB1\xEF\xBD\xB2\xEF\xBD\xB3\xEF\xBD\xB4-10AB", 1},
                      Conversation{"UnknownCode", "", "KX99900000-10A", kDetected, R::NotFound, -1, "KX99900000-10A", 1},
                      Conversation{"NoModelAnywhere", "", kOther, "NMLKJIHGFEDCBA", R::NotFound, -1, "NMLKJIHGFEDCBA",
                                   2},
                      Conversation{"Silence", "", Conversing::kS, kDetected, R::NoAnswer, -1, "Nothing", 1},
                      Conversation{"SecondSilent", "", kOther, Conversing::kS, R::NoAnswer, -1, "Nothing", 2},
                      Conversation{"Refused", "", Conversing::kE, kDetected, R::NoAnswer, -1, "Nothing", 1},
                      Conversation{"DamagedKeepsTheOldString", kOld, Conversing::kD, kDetected, R::NoAnswer, -1, kOld, 1},
                      Conversation{"DamagedThenSound", "", Conversing::kD, kDetected, R::Found, 2, kDetected, 2},
                      Conversation{"ReplyOfAnotherLength", kOld, "KX62000000-10AXX", kDetected, R::NoAnswer, -1, kOld, 1},
                      Conversation{"ReplyOfAnotherFunction", kOld, Conversing::kF, kDetected, R::NoAnswer, -1, kOld, 1}),
    [](const auto& row) { return std::string(row.param.name); });

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

struct Choice
{
    const char* name;
    const char* modelString;
    modelcodes::Match match;
    int position;
};

TEST(ModelCodes, SelectTheFirstEntryThatBeginsAlike)
{
    using M = modelcodes::Match;
    const QStringList codes{QStringLiteral("KX410"), QStringLiteral("KX620A"), QStringLiteral("KX620B"),
                            QStringLiteral("KX6")};
    const Choice rows[] = {
        {"longer code", "KX62000000-10A", M::Found, 1},
        {"no such code", "KX64000000-10A", M::NotFound, -1},
        {"13 characters", "KX41000000-10", M::NotFound, -1},
        {"Nothing", "Nothing", M::NoAnswer, -1},
    };
    for (const Choice& row : rows) {
        const modelcodes::Selection selection = modelcodes::select(QString::fromLatin1(row.modelString), codes);
        EXPECT_EQ(selection.match, row.match) << row.name;
        EXPECT_EQ(selection.position, row.position) << row.name;
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
