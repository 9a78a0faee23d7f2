#pragma once

#include <QString>

#include <termios.h>

// Sets speed and character format ("N,8,1": parity N, E or O, data bits 7 or 8, stop bits 1 or 2) of a serial device.
// False with a text for speeds and formats that the machine does not know; line is unchanged then.
bool setLine(termios& line, int speed, const QString& chara, QString& errorText);
