#pragma once

#include <QJsonObject>
#include <QListWidget>

class QMenu;

// Every action, built-in and the user's, in one list on the actions page. Each load also
// writes the listing that the action menus and shortcuts read from the settings.
class ActionList final : public QListWidget
{
    Q_OBJECT

public:
    // Item data of a row; the action editor reads the same roles.
    enum Role : int {
        ScriptRole = Qt::UserRole + 1,
        PathRole = Qt::UserRole + 12,
        TitleRole = Qt::UserRole + 14,
        DescriptionRole = Qt::UserRole + 15,
        InputRole = Qt::UserRole + 16,
        FailedRole = Qt::UserRole + 17,
        HiddenRole = Qt::UserRole + 18,
        ShortcutRole = Qt::UserRole + 19,
        UnreadableRole = Qt::UserRole + 20,
    };

    explicit ActionList(QWidget *parent = nullptr);

    void load();
    // The commands of one row: view or edit, shortcut, hide or show, delete.
    QMenu *createRowMenu(QListWidgetItem *item, QWidget *parent);

    void editAction(QListWidgetItem *item);
    void newAction();
    void setShortcut(QListWidgetItem *item, const QString &shortcut);
    void setHidden(QListWidgetItem *item, bool hidden);
    void deleteAction(QListWidgetItem *item);

signals:
    // The user saved, created or deleted an action file.
    void actionFilesEdited();
    // Shortcuts or hidden flags were written.
    void actionsChanged();

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QListWidgetItem *addRow(const QString &path, const QJsonObject &action,
                            const QStringList &hidden, const QVariantMap &shortcuts);
    void updateRowWidget(QListWidgetItem *item);
    void fitRowHeight(QListWidgetItem *item);
    void askForShortcut(QListWidgetItem *item);
    void showRowMenu(QListWidgetItem *item);
    void writeSettings();

    bool m_loaded = false;
};
