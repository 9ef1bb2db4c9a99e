#include "settings/AppLockModel.h"

#include "platform/linux/QtDispatcher.h"
#include "records/DeviceOwnerAuthenticator.h"

namespace tidemark {

AppLockModel::AppLockModel(QObject* parent)
    : QObject(parent), available_(deviceOwnerAuthenticator().canEvaluate()) {
    lockToken_ = lock_.appLockStatu.observe([this] { emit changed(); }, queuedOn(this));
    wishToken_ = lock_.appLockSettingFromUser.observe([this] { emit changed(); }, queuedOn(this));
    dialogueToken_ =
        deviceOwnerAuthenticator().observeDialogue([this] { readDialogue(); }, queuedOn(this));
    readDialogue();
}

bool AppLockModel::locked() const {
    return lock_.appLockStatu.get();
}

bool AppLockModel::lockAtNextLaunch() const {
    return lock_.appLockSettingFromUser.get();
}

void AppLockModel::setLockAtNextLaunch(bool on) {
    if (on != lockAtNextLaunch()) {
        lock_.appLockSettingFromUser.set(on);
    }
}

QString AppLockModel::reason() const {
    return reason_.isEmpty() ? qtTrId("lockAndUnlockAppByFaceIDReasonStringAtFunc") : reason_;
}

void AppLockModel::unlock() {
    // The system may have gained (or lost) a way to authenticate since the page was made.
    const bool available = deviceOwnerAuthenticator().canEvaluate();
    if (available != available_) {
        available_ = available;
        emit changed();
    }
    lock_.unlockAppWithDeviceOwner();
}

void AppLockModel::answer(const QString& text) {
    deviceOwnerAuthenticator().answer(text.toStdString());
}

void AppLockModel::cancel() {
    deviceOwnerAuthenticator().cancel();
}

void AppLockModel::readDialogue() {
    const auto dialogue = deviceOwnerAuthenticator().dialogue();
    busy_ = dialogue.running;
    reason_ = QString::fromStdString(dialogue.reason);
    prompt_ = QString::fromStdString(dialogue.prompt).trimmed();
    secret_ = dialogue.secret;
    info_ = QString::fromStdString(dialogue.info);
    error_ = QString::fromStdString(dialogue.error);
    emit changed();
}

} // namespace tidemark
