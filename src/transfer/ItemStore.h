#pragma once

#include <QString>

class clsData;
class clsKXAdr;

// Puts the stored value of an item into the write copy of a memory image, by the item's type, length and address. False
// when the value is none that this item can have in the controller (no number, or one that does not fit) or the item is
// one that is not written, by its type or its definition; the image is unchanged then.
bool storeInImage(const clsData& item, clsKXAdr& image);
// Whether it would; the image stays what it is.
bool fitsImage(const clsData& item, const clsKXAdr& image);

// The text that a read gives for a stored value once the controller holds it: four bytes keep seven digits.
QString heldText(const clsData& item, const QString& storedText);

// The controller has accepted the value that storeInImage put into the write copy: that value alone is held now.
void acceptInImage(const clsData& item, clsKXAdr& image);
