#pragma once

#include "FrameFields.h"
#include "Translator.h"

// A frame's fields as a person reads them, in the language in use.
namespace frametexts {

QString direction(const FrameFields& fields, const TranslateText& tran);
QString function(const FrameFields& fields, const TranslateText& tran); // "66 read memory"
QString address(const FrameFields& fields);                             // hexadecimal, as the definition files have it
QString check(const FrameFields& fields, const TranslateText& tran);    // "CRC OK"; empty without a check value
// What is wrong, or what a person should know besides the fields.
QString remark(const FrameFields& fields, const TranslateText& tran);
// Everything at length, in several lines: fields with their names, the parameters as they are given, the whole frame,
// its text form in ASCII mode.
QString details(const FrameFields& fields, const QString& stamp, const QString& parameters, const TranslateText& tran);

// "the controller refused the request (exception 2, illegal data address)".
QString refusal(int exceptionCode, const TranslateText& tran);

// "01 42 00"; the part that is shown of a long one ends in "...".
QString hexBytes(const QByteArray& bytes);

} // namespace frametexts
