// The project's own addresses: its web site, the contact pages, the feedback mailbox and the tip
// page. Every screen that links out takes its address from here.
#pragma once

namespace tidemark {

inline constexpr const char* kProjectHomepage = "https://tidemark.org";
/// The contact page for the regions "CN", "TW", "HK" and "MO".
inline constexpr const char* kContactPageChineseRegions = "https://tidemark.org/zh/contact";
/// The contact page for every other region, or none.
inline constexpr const char* kContactPageGeneral = "https://tidemark.org/contact";
inline constexpr const char* kFeedbackAddress = "feedback@tidemark.org";
/// The voluntary tip: a page of the project's site; a tip unlocks nothing.
inline constexpr const char* kTipPage = "https://tidemark.org/tip";
inline constexpr const char* kSourcePage = "https://tidemark.org/source";

} // namespace tidemark
