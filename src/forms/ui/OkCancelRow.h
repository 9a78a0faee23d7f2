#pragma once

class QPushButton;
class QWidget;

namespace platform {

// The last row of a dialog: OK, which is the default, and Cancel, at the right. Named "Command1_0" and "Command1_1", as
// language files know them. The parent owns the row, the row its buttons.
struct OkCancelRow
{
    explicit OkCancelRow(QWidget* parent);

    QWidget* row;
    QPushButton* ok;
    QPushButton* cancel;
};

} // namespace platform
