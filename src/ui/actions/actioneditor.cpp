#include "ui/actions/actioneditor.h"

#include "actions/actionapi.h"
#include "actions/actionfiles.h"
#include "ui/actions/actionlist.h"
#include "ui/actions/editorcolorscheme.h"

#include <Qsci/qsciapis.h>
#include <Qsci/qscilexerjavascript.h>
#include <Qsci/qsciscintilla.h>

#include <QDateTime>
#include <QDebug>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QJsonArray>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSplitter>
#include <QTimer>
#include <QVBoxLayout>

namespace {

// The names a script works with, offered while typing.
const char *const contractNames[] = {
    "clipping", "plainText",   "application", "velmorin", "test()", "console",   "log",    "warn",
    "error",    "info",        "debug",       "JSON",     "parse",  "stringify", "split",  "join",
    "replace",  "toLowerCase", "toUpperCase", "trim",     "length", "map",       "filter", "Date",
};

} // namespace

ActionEditor::ActionEditor(const QModelIndex &action, QWidget *parent)
    : QDialog(parent), m_testTimer(new QTimer(this))
{
    setObjectName(QStringLiteral("actionEditor"));
    createWidgets();
    m_testTimer->setSingleShot(true);
    m_testTimer->setInterval(500);
    connect(m_testTimer, &QTimer::timeout, this, &ActionEditor::runLiveTest);

    if (action.isValid()) {
        m_path = action.data(ActionList::PathRole).toString();
        setWindowTitle(m_path);
        m_title->setText(action.data(ActionList::TitleRole).toString());
        m_description->setText(action.data(ActionList::DescriptionRole).toString());
        m_script->setText(action.data(ActionList::ScriptRole).toString());
        m_input->setPlainText(action.data(ActionList::InputRole).toString());
        m_failed = action.data(ActionList::FailedRole).toBool();
        m_parameterValues = ActionFiles::parameterValues(m_path);
    } else {
        setWindowTitle(tr("New action"));
        m_script->setText(ActionFiles::templateScript());
        m_input->setPlainText(tr("The quick brown fox jumps over the lazy dog."));
    }

    QPushButton *save = m_buttons->button(QDialogButtonBox::Save);
    if (isBuiltIn()) {
        m_title->setEnabled(false);
        m_description->setEnabled(false);
        m_script->setReadOnly(true);
        save->hide();
        m_buttons->button(QDialogButtonBox::Cancel)->setText(tr("Close"));
    }
    save->setEnabled(!m_title->text().isEmpty());
    connect(m_title, &QLineEdit::textChanged, save,
            [save](const QString &title) { save->setEnabled(!title.isEmpty()); });
    connect(m_script, &QsciScintilla::textChanged, this, &ActionEditor::restartTest);
    connect(m_input, &QPlainTextEdit::textChanged, this, &ActionEditor::restartTest);
    restartTest();
}

void ActionEditor::createWidgets()
{
    m_title = new QLineEdit(this);
    m_title->setObjectName(QStringLiteral("title"));
    m_description = new QLineEdit(this);
    m_description->setObjectName(QStringLiteral("description"));
    m_script = new QsciScintilla(this);
    m_script->setObjectName(QStringLiteral("script"));
    setUpScriptEditor();

    m_parameters = new QGroupBox(tr("Parameters"), this);
    m_parameterGrid = new QGridLayout(m_parameters);
    m_parameters->hide();

    m_input = new QPlainTextEdit(this);
    m_input->setObjectName(QStringLiteral("testInput"));
    m_output = new QPlainTextEdit(this);
    m_output->setObjectName(QStringLiteral("testOutput"));
    m_output->setReadOnly(true);
    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("status"));
    m_status->setWordWrap(true);
    m_status->setTextInteractionFlags(Qt::TextSelectableByMouse);

    m_buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
    connect(m_buttons->button(QDialogButtonBox::Save), &QPushButton::clicked, this,
            &ActionEditor::onAccepted);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *fields = new QFormLayout;
    fields->addRow(tr("Title:"), m_title);
    fields->addRow(tr("Description:"), m_description);

    auto *test = new QWidget(this);
    auto *testLayout = new QGridLayout(test);
    testLayout->setContentsMargins(0, 0, 0, 0);
    testLayout->addWidget(new QLabel(tr("Test input:"), test), 0, 0);
    testLayout->addWidget(new QLabel(tr("Output:"), test), 0, 1);
    testLayout->addWidget(m_input, 1, 0);
    testLayout->addWidget(m_output, 1, 1);

    auto *splitter = new QSplitter(Qt::Vertical, this);
    splitter->addWidget(m_script);
    splitter->addWidget(test);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 1);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(fields);
    layout->addWidget(splitter, 1);
    layout->addWidget(m_parameters);
    layout->addWidget(m_status);
    layout->addWidget(m_buttons);
    resize(760, 640);
}

void ActionEditor::setUpScriptEditor()
{
    auto *lexer = new QsciLexerJavaScript(m_script);
    lexer->setDefaultFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    lexer->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont), -1);
    auto *names = new QsciAPIs(lexer);
    for (const char *name : contractNames)
        names->add(QLatin1String(name));
    names->prepare();
    m_script->setLexer(lexer);
    m_script->setUtf8(true);
    m_script->setWrapMode(QsciScintilla::WrapNone);
    // The horizontal scroll bar follows the longest line instead of a fixed width.
    m_script->SendScintilla(QsciScintilla::SCI_SETSCROLLWIDTH, 1);
    m_script->SendScintilla(QsciScintilla::SCI_SETSCROLLWIDTHTRACKING, true);
    m_script->setAutoIndent(true);
    m_script->setIndentationsUseTabs(false);
    m_script->setIndentationWidth(4);
    m_script->setBraceMatching(QsciScintilla::SloppyBraceMatch);
    m_script->setAutoCompletionSource(QsciScintilla::AcsAll);
    m_script->setAutoCompletionThreshold(2);
    m_script->setAutoCompletionCaseSensitivity(false);
    m_script->setMarginType(0, QsciScintilla::NumberMargin);
    m_script->setMarginWidth(0, QStringLiteral("0000"));
    EditorColorScheme::apply(QStringLiteral(":/styles/drakula.xml"), m_script);
}

bool ActionEditor::isBuiltIn() const
{
    return ActionFiles::isBuiltIn(m_path);
}

void ActionEditor::restartTest()
{
    m_output->clear();
    m_status->setText(tr("Status: Evaluating..."));
    m_testTimer->start();
}

void ActionEditor::runLiveTest()
{
    QString error;
    ActionAPI::runScript(m_script->text(), QString(), QString(), {}, error, TestTimeLimitMs);
    if (!error.isEmpty()) {
        m_status->setText(tr("Status: ") + error);
        m_failed = true;
        return;
    }
    rebuildParameterBoxes();
    evaluateTest();
}

void ActionEditor::evaluateTest()
{
    QString error;
    const QStringList result =
        ActionAPI::runScript(m_script->text(), m_input->toPlainText(), QString(), parameterTexts(),
                             error, TestTimeLimitMs);
    m_status->setText(tr("Status: ") + (error.isEmpty() ? tr("Success") : error));
    m_output->setPlainText(result.join(QLatin1Char('\n')));
    m_failed = !error.isEmpty();
}

void ActionEditor::rebuildParameterBoxes()
{
    static const QRegularExpression argumentList(QStringLiteral("^\\(.*?\\((.+?)\\)\\s*[={]"));
    const QRegularExpressionMatch match = argumentList.match(m_script->text());
    if (!match.hasMatch())
        return;
    QStringList names = match.captured(1).split(QLatin1Char(','));
    names.removeFirst(); // the clipping
    keepParameterTexts();
    QLayoutItem *child;
    while ((child = m_parameterGrid->takeAt(0)) != nullptr) {
        delete child->widget();
        delete child;
    }
    m_parameterBoxes.clear();
    m_parameters->setVisible(!names.isEmpty());
    for (const QString &untrimmed : std::as_const(names)) {
        const QString name = untrimmed.trimmed();
        const int row = int(m_parameterBoxes.size());
        auto *box = new QLineEdit(m_parameterValues.value(name).toString(), m_parameters);
        box->setObjectName(name);
        connect(box, &QLineEdit::textEdited, this, &ActionEditor::restartTest);
        m_parameterGrid->addWidget(new QLabel(name + QLatin1Char(':'), m_parameters), row, 0);
        m_parameterGrid->addWidget(box, row, 1);
        m_parameterBoxes.append(box);
    }
}

void ActionEditor::keepParameterTexts()
{
    for (const QLineEdit *box : std::as_const(m_parameterBoxes))
        m_parameterValues.insert(box->objectName(), box->text());
}

QStringList ActionEditor::parameterTexts() const
{
    QStringList texts;
    for (const QLineEdit *box : m_parameterBoxes)
        texts.append(box->text());
    return texts;
}

void ActionEditor::onAccepted()
{
    if (isBuiltIn())
        return;
    const QString folder = ActionFiles::userFolder();
    if (!QDir().mkpath(folder)) {
        qWarning().noquote() << "Failed to create " + folder;
        return;
    }
    const QString path = m_path.isEmpty() ? ActionFiles::newFilePath(m_title->text()) : m_path;
    QJsonObject action{
        {QLatin1String("title"), m_title->text()},
        {QLatin1String("description"), m_description->text()},
        {QLatin1String("script"), m_script->text()},
        {QLatin1String("input"), m_input->toPlainText()},
        {QLatin1String("failed"), m_failed},
        {QLatin1String("created"), QDateTime::currentDateTime().toString(Qt::ISODate)},
    };
    QJsonArray params;
    for (const QLineEdit *box : std::as_const(m_parameterBoxes)) {
        params.append(box->objectName());
        m_parameterValues.insert(box->objectName(), box->text());
    }
    action.insert(QLatin1String("params"), params);
    if (!ActionFiles::writeAction(path, action)) {
        qWarning().noquote() << path + QStringLiteral(" cannot be opened for writing.");
        QMessageBox::warning(this, QStringLiteral("Velmorin"),
                             tr("Writing the action file failed: ") + path);
        return;
    }
    ActionFiles::setParameterValues(path, m_parameterValues);
    m_path = path;
    accept();
}

void ActionEditor::done(int result)
{
    // A built-in cannot be saved, but the values typed for its parameters are what its runs
    // from the menus use.
    if (isBuiltIn() && !m_parameterBoxes.isEmpty()) {
        keepParameterTexts();
        ActionFiles::setParameterValues(m_path, m_parameterValues);
    }
    QDialog::done(result);
}
