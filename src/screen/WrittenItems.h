#pragma once

class ItemData;
class clsKXAdr;
struct ModelData;

// What of a model goes to the controller and what comes from it, as the comm file says.

// Whether a write command carries the item's value to the controller. The others are measured, or belong to the
// controller alone.
bool isWritten(const ModelData& model, const ItemData& item);
// Whether write entry i (from 1) of the image carries the item's value.
bool carries(const ModelData& model, const clsKXAdr& image, int i, const ItemData& item);

// Whether a choice of the item is sent as soon as it is made: all other values are in terms of it.
bool goesOutAtOnce(const ModelData& model, const ItemData& item);

// Whether the item is read from the controller at all; one that is not has no value of its own.
bool isRead(const ModelData& model, const ItemData& item);
// Whether the item has a value that stands for the controller's. The definition's default of what is read is none,
// except off-line, where the defaults are the values.
bool hasValue(const ModelData& model, const ItemData& item);
