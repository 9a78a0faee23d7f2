#pragma once

#include <QString>

// The parameters that the program has rules about, by the tags that every definition gives them.
namespace tags {

inline const QString kUnit = QStringLiteral("SWQCF"); // 0 Celsius, else Kelvin
inline const QString kInputRange = QStringLiteral("PQRNO");
inline const QString kPoint = QStringLiteral("SVDOT"); // decimal places of temperatures and of what is set for them
inline const QString kModelCode = QStringLiteral("MQCODE");
inline const QString kControlAction = QStringLiteral("PIDONOF");

inline const QString kInputLower = QStringLiteral("VQLIL");
inline const QString kInputUpper = QStringLiteral("VQLIH");
inline const QString kInputLowerEntry = QStringLiteral("VQLIZL"); // sets kInputLower
inline const QString kInputUpperEntry = QStringLiteral("VQLIZS"); // sets kInputUpper
inline const QString kRangeLower = QStringLiteral("RANGEL");
inline const QString kRangeUpper = QStringLiteral("RANGEH");
inline const QString kSetLower = QStringLiteral("VQSVL");
inline const QString kSetUpper = QStringLiteral("VQSVH");
inline const QString kSetValue1 = QStringLiteral("VQSV1");
inline const QString kSetValue2 = QStringLiteral("VQSV2");
inline const QString kRampUp = QStringLiteral("VQSVUP");
inline const QString kRampDown = QStringLiteral("VQSVDWN");
inline const QString kBias = QStringLiteral("VQBIA");
inline const QString kRemoteBias = QStringLiteral("VQRBIA");

inline const QString kBand = QStringLiteral("VQP1"); // proportional band
inline const QString kIntegral = QStringLiteral("VQI1");
inline const QString kDerivative = QStringLiteral("VQD1");
inline const QString kGap = QStringLiteral("VQODB"); // on/off differential
inline const QString kOutputLower = QStringLiteral("VQOL1");
inline const QString kOutputUpper = QStringLiteral("VQOH1");

inline const QString kDigitalInput = QStringLiteral("FQDI");
inline const QString kAlarmTypes = QStringLiteral("PQKAL"); // followed by the alarm's number
inline const QString kAlarmValues = QStringLiteral("VQAL"); // followed by the alarm's number
inline const QString kAlarmBand1 = QStringLiteral("VQ1DB");
inline const QString kAlarmBand2 = QStringLiteral("VQ2DB");
inline const QString kAlarmBand3 = QStringLiteral("VQ3DB");

// PQKAL1 and so on.
inline QString alarmType(int alarm)
{
    return kAlarmTypes + QString::number(alarm);
}

// The limits of the input: a voltage or current input is scaled by them.
inline bool isInputLimit(const QString& tag)
{
    return tag == kInputLower || tag == kInputUpper;
}

// The dead-band of an alarm; its number is the third character.
inline bool isAlarmBand(const QString& tag)
{
    return tag == kAlarmBand1 || tag == kAlarmBand2 || tag == kAlarmBand3;
}

} // namespace tags
