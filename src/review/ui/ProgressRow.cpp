#include "ProgressRow.h"

#include "VisibleText.h"
#include "clsLibrary.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

ProgressRow::ProgressRow(const clsLibrary& library, QWidget* parent)
    : QWidget(parent), m_library(library), m_bar(new QProgressBar(this)), m_text(new QLabel(this)),
      m_stop(new QPushButton(QStringLiteral("Sto&p"), this))
{
    m_bar->setObjectName(QStringLiteral("ProgressBar1"));
    m_text->setObjectName(QStringLiteral("Label2"));
    m_stop->setAutoDefault(false);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_bar);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_stop);
    hide();
}

void ProgressRow::open(int maximum, const QString& /*title*/, const QString& text, bool /*disableOwner*/,
                       bool cancelButton)
{
    m_bar->setMaximum(maximum);
    m_bar->setValue(0);
    setText(m_library.tranStr(text));
    m_stop->setVisible(cancelButton);
    show();
    m_isBusy = true;
    Q_EMIT busyChanged();
}

void ProgressRow::setPosition(int position)
{
    m_bar->setValue(position);
}

void ProgressRow::setText(const QString& text)
{
    m_text->setText(platform::visibleText(text.simplified()));
}

void ProgressRow::close()
{
    hide();
    m_isBusy = false;
    Q_EMIT busyChanged();
}
