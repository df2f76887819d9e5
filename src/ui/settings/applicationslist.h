#pragma once

#include "history/applicationrules.h"

#include <QListWidget>

class QMenu;

// The applications seen as clipboard sources, one row each, with the rules the user gave
// them. Reads the settings in load() and writes them in save().
class ApplicationsList final : public QListWidget
{
    Q_OBJECT

public:
    explicit ApplicationsList(QWidget *parent = nullptr);

    void load();
    void save() const;

    QList<ApplicationRules::Application> applications() const;
    bool hasRule(int row, ApplicationRules::Rule rule) const;
    void setRule(int row, ApplicationRules::Rule rule, bool on);
    int delay(int row) const;
    void setDelay(int row, int milliseconds);
    PasteKeys::Key pasteKey(int row) const;
    void setPasteKey(int row, PasteKeys::Key key);

    // The rule commands for the current row under the long texts of the row's own menu.
    QMenu *createContextMenu(int row, QWidget *parent);
    // The same commands under short texts, plus Remove, for a button beside the list.
    QMenu *actionMenu() const { return m_actionMenu; }

    // Opens the delay dialog for a row; OK stores the new delay.
    void editDelay(int row);
    void removeCurrent();

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    QListWidgetItem *addApplication(const ApplicationRules::Application &application);
    void fillMenu(QMenu *menu, int row, const QStringList &texts);
    void addPasteKeyMenu(QMenu *menu, int row);
    void updateActionMenu();

    QMenu *m_actionMenu;
};
