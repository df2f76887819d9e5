#pragma once

#include <QDialog>

// Shows what is new in this version, once after an update.
class ReleaseNotesDialog final : public QDialog
{
    Q_OBJECT

public:
    explicit ReleaseNotesDialog(QWidget *parent = nullptr);

    static QString notes();
};
