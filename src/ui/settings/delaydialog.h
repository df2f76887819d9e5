#pragma once

#include <QDialog>

class QSlider;
class QSpinBox;

// Asks for the delay before keywords expand in one application, in milliseconds.
class DelayDialog final : public QDialog
{
    Q_OBJECT

public:
    explicit DelayDialog(QWidget *parent = nullptr);

    int delay() const;
    void setDelay(int milliseconds);

    QSlider *slider() const { return m_slider; }
    QSpinBox *spinBox() const { return m_spinBox; }

private:
    QSlider *m_slider;
    QSpinBox *m_spinBox;
};
