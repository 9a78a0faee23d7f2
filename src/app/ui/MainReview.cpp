#include "MainReview.h"

#include "CellEditor.h"
#include "ControllerState.h"
#include "ProgramContext.h"
#include "ProgressDialogView.h"
#include "TransferEngine.h"
#include "clsKX.h"
#include "frmReview.h"
#include "vaSpread.h"

MainReview::MainReview(const Parts& parts, QObject* parent) : QObject(parent), m_parts(parts), m_review(parts.kx)
{
    connect(&m_parts.editor, &CellEditor::edited, this, &MainReview::refresh);
    connect(&m_parts.controller, &ControllerState::changed, this, &MainReview::reload);
    connect(&m_parts.engine, &TransferEngine::activityChanged, this, [this] {
        if (m_form != nullptr)
            m_form->setBusy(m_parts.engine.isBusy());
    });
    connect(&m_parts.engine, &TransferEngine::written, this, [this] {
        m_parts.progress.setInstead(nullptr); // what follows, such as a read by the settings, was not asked for here
        m_review.noteWrite(m_parts.engine.lastWrite());
        reload();
    });
    connect(&m_parts.engine, &TransferEngine::readEnded, this, [this] {
        const bool isRead = m_parts.engine.activity() == TransferEngine::Activity::Idle;
        if (isRead && m_parts.engine.lastRead().refreshed)
            forget();
        else
            refresh();
    });
}

MainReview::~MainReview() = default;

void MainReview::show()
{
    if (m_form == nullptr) {
        m_form = std::make_unique<frmReview>(m_parts.program.library(), m_review);
        connect(m_form.get(), &frmReview::sendWanted, this, &MainReview::send);
        connect(m_form.get(), &frmReview::revertWanted, &m_parts.editor, &CellEditor::revertAll);
        connect(m_form.get(), &frmReview::goWanted, this, &MainReview::goTo);
        connect(m_form.get(), &frmReview::cancelled, this, [this] { m_parts.engine.ProgCancel(0); });
    }
    refresh();
    m_form->show();
    m_form->raise();
    m_form->activateWindow();
}

void MainReview::translate()
{
    if (m_form != nullptr)
        m_form->tranForm();
    reload();
}

void MainReview::close()
{
    if (m_form != nullptr)
        m_form->close();
}

void MainReview::refresh()
{
    m_review.refresh();
    reload();
}

void MainReview::forget()
{
    m_review.forget();
    reload();
}

void MainReview::reload()
{
    if (m_form != nullptr) {
        m_form->setObstacle(obstacle());
        m_form->reload();
    }
    Q_EMIT changed();
}

QString MainReview::obstacle() const
{
    const clsLibrary& library = m_parts.program.library();
    if (m_parts.program.settings().neverWrites())
        return library.tranStr(QStringLiteral("Off, because the program is set never to write to a controller."));
    if (m_parts.program.settings().m_bComm)
        return library.tranStr(QStringLiteral("Off, because the program works without a controller."));
    if (m_parts.controller.state() != MainState::UpToDate)
        return library.tranStr(QStringLiteral("Please acquire the up-to-date data from the equipment."));
    return {};
}

// The window asks for no questions of its own; those of a write come as with every other one.
void MainReview::send(const QStringList& tags)
{
    if (m_parts.engine.isBusy())
        return;
    m_parts.progress.setInstead(&m_form->progress());
    m_parts.engine.writeChosen(tags);
    m_parts.progress.setInstead(nullptr);
}

QString MainReview::changesText() const
{
    const int count = m_parts.program.settings().m_bComm ? 0 : m_review.changes();
    const clsLibrary& library = m_parts.program.library();
    if (count < 2)
        return count == 0 ? QString() : library.tranStr(QStringLiteral("1 change"));
    return library.tranStr(QStringLiteral("%1 changes")).arg(count);
}

void MainReview::goTo(const QString& tag)
{
    const clsData* item = m_parts.kx.getDataByTag(tag);
    if (item == nullptr || !item->Visible())
        return;
    m_parts.grid.setCurrentCell(item->Col(), item->Row());
    m_parts.grid.window()->activateWindow();
    m_parts.grid.setFocus();
}
