#include "toolkit/AppStorage.h"

#include "platform/linux/QtDispatcher.h"
#include "records/Defaults.h"
#include "records/SettingsKeys.h"

#include <QLoggingCategory>

namespace tidemark {

namespace {

Q_LOGGING_CATEGORY(lcStorage, "tidemark.storage")

/// The key's type, or nothing (with one warning per key) for a key the catalogue lacks.
std::optional<SettingType> typeOf(const QString& key) {
    const auto type = settingTypeOf(key.toStdString());
    if (!type && !key.isEmpty()) {
        qCWarning(lcStorage) << "AppStorage: no setting is declared with the key" << key;
    }
    return type;
}

template <class Enum> bool isRawValueOf(const std::string& raw) {
    return fromRawValue(raw, static_cast<Enum*>(nullptr)).has_value();
}

} // namespace

AppStorage::AppStorage(QObject* parent) : QObject(parent) {}

void AppStorage::setKey(const QString& key) {
    if (key == key_) {
        return;
    }
    key_ = key;
    observation_ = DefaultsSuite::standard().observe(
        key_.toStdString(), [this] { emit valueChanged(); }, queuedOn(this));
    emit keyChanged();
    emit valueChanged();
}

void AppStorage::setDefaultValue(const QVariant& value) {
    if (value == default_) {
        return;
    }
    default_ = value;
    emit valueChanged();
}

QVariant AppStorage::value() const {
    const auto type = typeOf(key_);
    if (!type) {
        return default_;
    }
    const auto stored = DefaultsSuite::standard().value(key_.toStdString());
    if (!stored) {
        return default_;
    }
    switch (*type) {
    case SettingType::Bool:
        if (const auto* v = std::get_if<bool>(&*stored)) {
            return *v;
        }
        break;
    case SettingType::Int:
        if (const auto* v = std::get_if<std::int64_t>(&*stored)) {
            return QVariant::fromValue<qint64>(*v);
        }
        break;
    case SettingType::String:
        if (const auto* v = std::get_if<std::string>(&*stored)) {
            return QString::fromStdString(*v);
        }
        break;
    case SettingType::Bytes:
        if (const auto* v = std::get_if<Bytes>(&*stored)) {
            return QByteArray(reinterpret_cast<const char*>(v->data()),
                              static_cast<qsizetype>(v->size()));
        }
        break;
    case SettingType::Theme:
    case SettingType::TabValue:
        if (const auto* v = std::get_if<std::string>(&*stored)) {
            const bool known =
                *type == SettingType::Theme ? isRawValueOf<Theme>(*v) : isRawValueOf<tabValue>(*v);
            if (known) {
                return QString::fromStdString(*v);
            }
        }
        break;
    }
    return default_;
}

void AppStorage::setValue(const QVariant& value) {
    const auto type = typeOf(key_);
    if (!type) {
        return;
    }
    auto& suite = DefaultsSuite::standard();
    const std::string key = key_.toStdString();
    switch (*type) {
    case SettingType::Bool:
        suite.setValue(key, value.toBool());
        break;
    case SettingType::Int:
        suite.setValue(key, static_cast<std::int64_t>(value.toLongLong()));
        break;
    case SettingType::String:
    case SettingType::Theme:
    case SettingType::TabValue:
        suite.setValue(key, value.toString().toStdString());
        break;
    case SettingType::Bytes: {
        const QByteArray bytes = value.toByteArray();
        suite.setValue(key, Bytes(bytes.begin(), bytes.end()));
        break;
    }
    }
}

} // namespace tidemark
