// The app lock for the window: whether the lock is in force, the wish to lock at the next launch,
// and the conversation of an unlock attempt (the question asked, the texts shown) with the
// answers the page gives back.
#pragma once

#include "records/Observation.h"
#include "records/realmDataFunc.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace tidemark {

class AppLockModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// The lock is in force now (appLockStatu).
    Q_PROPERTY(bool locked READ locked NOTIFY changed)
    /// The user wants the lock at the next launch (appLockSettingFromUser).
    Q_PROPERTY(bool lockAtNextLaunch READ lockAtNextLaunch WRITE setLockAtNextLaunch NOTIFY changed)
    /// The device can authenticate its owner at all.
    Q_PROPERTY(bool available READ available NOTIFY changed)
    /// Why the app asks, in the user's language.
    Q_PROPERTY(QString reason READ reason NOTIFY changed)
    /// An unlock attempt is in progress.
    Q_PROPERTY(bool busy READ busy NOTIFY changed)
    /// The question waiting for an answer ("Password: "), "" when none waits.
    Q_PROPERTY(QString prompt READ prompt NOTIFY changed)
    /// The answer to `prompt` is a secret: shown as dots.
    Q_PROPERTY(bool secret READ secret NOTIFY changed)
    /// Progress text of the attempt ("Place your finger on the reader").
    Q_PROPERTY(QString info READ info NOTIFY changed)
    /// Error text of the attempt.
    Q_PROPERTY(QString error READ error NOTIFY changed)
public:
    explicit AppLockModel(QObject* parent = nullptr);

    bool locked() const;
    bool lockAtNextLaunch() const;
    void setLockAtNextLaunch(bool on);
    bool available() const { return available_; }
    QString reason() const;
    bool busy() const { return busy_; }
    QString prompt() const { return prompt_; }
    bool secret() const { return secret_; }
    QString info() const { return info_; }
    QString error() const { return error_; }

    /// Asks the device owner to authenticate; the lock lifts when they do.
    Q_INVOKABLE void unlock();
    /// Answers the waiting question.
    Q_INVOKABLE void answer(const QString& text);
    /// Gives up the attempt in progress; the lock stays.
    Q_INVOKABLE void cancel();

signals:
    void changed();

private:
    void readDialogue();

    extensionDataFunc lock_;
    bool available_ = false;
    bool busy_ = false;
    bool secret_ = false;
    QString reason_, prompt_, info_, error_;
    ObservationToken lockToken_, wishToken_, dialogueToken_;
};

} // namespace tidemark
