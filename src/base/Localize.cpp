#include "base/Localize.h"

#include <mutex>

namespace tidemark {

namespace {
std::mutex& translatorMutex() {
    static std::mutex m;
    return m;
}
Translator& installedTranslator() {
    static Translator t;
    return t;
}
} // namespace

void setTranslator(Translator translator) {
    std::lock_guard lock(translatorMutex());
    installedTranslator() = std::move(translator);
}

std::string localized(std::string_view key) {
    Translator t;
    {
        std::lock_guard lock(translatorMutex());
        t = installedTranslator();
    }
    return t ? t(key) : std::string(key);
}

} // namespace tidemark
