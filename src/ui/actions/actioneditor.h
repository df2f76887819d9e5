#pragma once

#include <QDialog>
#include <QModelIndex>
#include <QVariantMap>

class QDialogButtonBox;
class QGridLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QTimer;
class QsciScintilla;

// Writes or views one action: its title, description and script, with a live test on a
// sample text that runs 500 ms after the last edit. Built-in actions open read-only.
class ActionEditor final : public QDialog
{
    Q_OBJECT

public:
    // The live test stops a runaway script sooner than a run from a menu does.
    static constexpr int TestTimeLimitMs = 1000;

    // action: a row of the action list, or an invalid index for a new action.
    explicit ActionEditor(const QModelIndex &action = QModelIndex(), QWidget *parent = nullptr);

    QString filePath() const { return m_path; }
    bool lastTestFailed() const { return m_failed; }

public slots:
    // Saves the action; the dialog stays open when the file cannot be written.
    void onAccepted();
    void evaluateTest();

protected:
    void done(int result) override;

private:
    void createWidgets();
    void setUpScriptEditor();
    void restartTest();
    void runLiveTest();
    void rebuildParameterBoxes();
    void keepParameterTexts();
    QStringList parameterTexts() const;
    bool isBuiltIn() const;

    QString m_path;
    bool m_failed = false;
    QVariantMap m_parameterValues;
    QList<QLineEdit *> m_parameterBoxes;
    QTimer *m_testTimer;
    QLineEdit *m_title = nullptr;
    QLineEdit *m_description = nullptr;
    QsciScintilla *m_script = nullptr;
    QGroupBox *m_parameters = nullptr;
    QGridLayout *m_parameterGrid = nullptr;
    QPlainTextEdit *m_input = nullptr;
    QPlainTextEdit *m_output = nullptr;
    QLabel *m_status = nullptr;
    QDialogButtonBox *m_buttons = nullptr;
};
