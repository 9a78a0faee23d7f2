#pragma once

class clsData;
class clsKX;
class clsKXAdr;

// Whether a write command of the comm file carries the item's value to the controller. The others are measured, or
// belong to the controller alone.
bool isWritten(const clsKX& kx, const clsData& item);

// Whether write entry i (from 1) of the image carries the item's value.
bool carries(const clsKX& kx, const clsKXAdr& image, int i, const clsData& item);

// Whether the item is read from the controller at all; one that is not has no value of its own.
bool isRead(const clsKX& kx, const clsData& item);
