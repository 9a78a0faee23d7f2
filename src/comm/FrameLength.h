#pragma once

#include <QByteArray>

// How long frames are ("MODBUS Application Protocol" V1.1b3, 6; 66, 70 and 71 as the controllers have them).
namespace framelength {

// Bytes of the binary frame (slave, function, data; no check value) that answers a request for so many items: bits,
// registers, floats or bytes of memory. 0: of no function that is known.
int ofReply(int functionCode, int items, bool writesMemory = false);

// Bytes on an RTU line of the request that begins so; 0 while that is not known yet.
qsizetype ofRtuRequest(const QByteArray& begin);

} // namespace framelength
