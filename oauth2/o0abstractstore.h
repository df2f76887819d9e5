#pragma once

#include <QObject>
#include <QString>

// Where the OAuth client keeps its tokens between runs.
class O0AbstractStore : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual QString value(const QString &key, const QString &defaultValue = QString()) = 0;
    virtual void setValue(const QString &key, const QString &value) = 0;
};
