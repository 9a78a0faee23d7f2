#pragma once

#include "Review.h"

#include <QObject>

#include <memory>

class CellEditor;
class ControllerState;
class ProgramContext;
class ProgressDialogView;
class TransferEngine;
class clsKX;
class frmReview;

namespace platform {
class vaSpread;
}

// The review of the main window: kept at what the grid and the transfers have come to, shown in a window made at its
// first use, whose wishes go to the engine and the editor. All parts are kept by reference.
class MainReview : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        ProgramContext& program;
        const ControllerState& controller;
        TransferEngine& engine;
        clsKX& kx;
        CellEditor& editor;
        platform::vaSpread& grid;
        ProgressDialogView& progress;
    };

    explicit MainReview(const Parts& parts, QObject* parent = nullptr);
    ~MainReview() override;

    void show();
    void translate();
    void close();
    void refresh(); // the grid or what may be sent has changed
    void forget();  // the grid holds another model, or what the controller sent
    // "3 changes", in the user's language; empty when there are none to send.
    QString changesText() const;
    void goTo(const QString& tag); // its cell, where it has one

Q_SIGNALS:
    void changed();

private:
    void reload();
    void send(const QStringList& tags);
    QString obstacle() const;

    Parts m_parts;
    Review m_review;
    std::unique_ptr<frmReview> m_form;
};
