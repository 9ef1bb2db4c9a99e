// AppStorage for QML: one declaration of a persisted setting, with its own default.
//
//     AppStorage { id: currentTab; key: "APP_FUNC_newTabBarTabValue"; defaultValue: "summaryView" }
//     ... currentTab.value ... ; currentTab.value = "eventListView"
//
// The key's type comes from the settings catalogue (records/SettingsKeys.h): bool, int, string,
// bytes (a QByteArray), and the two enumerations as their raw value strings (an unknown stored
// raw value reads as this declaration's default). A default is never stored; every declaration of
// a key, in QML or in C++, shares the stored value; writing the default still stores it; and every
// write, from any thread, updates every declaration of the key. A key missing from the catalogue
// is a programming error: it is reported once and reads as the default.
#pragma once

#include "records/Observation.h"

#include <QObject>
#include <QString>
#include <QVariant>
#include <QtQml/qqmlregistration.h>

namespace tidemark {

class AppStorage : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString key READ key WRITE setKey NOTIFY keyChanged)
    Q_PROPERTY(QVariant defaultValue READ defaultValue WRITE setDefaultValue NOTIFY valueChanged)
    Q_PROPERTY(QVariant value READ value WRITE setValue NOTIFY valueChanged)
public:
    explicit AppStorage(QObject* parent = nullptr);

    QString key() const { return key_; }
    void setKey(const QString& key);
    QVariant defaultValue() const { return default_; }
    void setDefaultValue(const QVariant& value);

    /// The stored value converted to the key's type, or the default.
    QVariant value() const;
    void setValue(const QVariant& value);

signals:
    void keyChanged();
    void valueChanged();

private:
    QString key_;
    QVariant default_;
    ObservationToken observation_;
};

} // namespace tidemark
