#include "OkCancelRow.h"

#include <QHBoxLayout>
#include <QPushButton>

namespace platform {

OkCancelRow::OkCancelRow(QWidget* parent)
    : row(new QWidget(parent)), ok(new QPushButton(QStringLiteral("OK"), row)),
      cancel(new QPushButton(QStringLiteral("Cancel"), row))
{
    ok->setObjectName(QStringLiteral("Command1_0"));
    ok->setDefault(true);
    cancel->setObjectName(QStringLiteral("Command1_1"));
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addStretch();
    layout->addWidget(ok);
    layout->addWidget(cancel);
}

} // namespace platform
