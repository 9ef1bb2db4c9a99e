// Haptic feedback through feedbackd on the session bus. Each call is one asynchronous
// TriggerFeedback of the event "button-pressed"; without a session bus, or without feedbackd on
// it, nothing happens.
#pragma once

#include <QObject>
#include <QString>

namespace tidemark {

inline constexpr const char* kFeedbackService = "org.sigxcpu.Feedback";
inline constexpr const char* kFeedbackPath = "/org/sigxcpu/Feedback";
inline constexpr const char* kFeedbackInterface = "org.sigxcpu.Feedback";

class Haptics : public QObject {
    Q_OBJECT
public:
    explicit Haptics(QObject* parent = nullptr);

    /// The feedback of the process's window (QML's "Haptics"), made on first use.
    static Haptics* instance();

    /// The feedback of a tap that confirms something (tab, arrow, an opened URL).
    Q_INVOKABLE void impact();

    /// How many feedbacks were asked for since start (sent or not).
    int requestCount() const { return requests_; }

private:
    int requests_ = 0;
};

} // namespace tidemark
