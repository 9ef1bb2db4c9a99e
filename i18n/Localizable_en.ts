<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>Localizable</name>
    <message id="Feedback&amp;Bugs _ Tide Mark">
        <source>Feedback &amp; Bugs – Tide Mark</source>
        <translation>Feedback &amp; Bugs – Tide Mark</translation>
    </message>
    <message id="Hello, World!">
        <source>Hello, World!</source>
        <translation>Hello, World!</translation>
    </message>
    <message id="aboutSubPageNavigationTitleString">
        <source>About</source>
        <translation>About</translation>
    </message>
    <message id="addMemoTitleStringAtMemoForCardViewPage">
        <source>New memo</source>
        <translation>New memo</translation>
    </message>
    <message id="addNewEventMemoContentSpaceholderString">
        <source>Notes (optional)</source>
        <translation>Notes (optional)</translation>
    </message>
    <message id="addNewEventMemoTitleSpaceholderString">
        <source>Title</source>
        <translation>Title</translation>
    </message>
    <message id="addNewEventPageContentSpaceholderString">
        <source>Notes (optional)</source>
        <translation>Notes (optional)</translation>
    </message>
    <message id="addNewEventPageContentString01">
        <source>Title and notes</source>
        <translation>Title and notes</translation>
    </message>
    <message id="addNewEventPageContentString01-1">
        <source>Date</source>
        <translation>Date</translation>
    </message>
    <message id="addNewEventPageContentString02">
        <source>Repeat</source>
        <translation>Repeat</translation>
    </message>
    <message id="addNewEventPageContentString02-3">
        <source>Custom interval</source>
        <translation>Custom interval</translation>
    </message>
    <message id="addNewEventPageContentString02-endDateString">
        <source>End date</source>
        <translation>End date</translation>
    </message>
    <message id="addNewEventPageContentString03">
        <source>Reminder</source>
        <translation>Reminder</translation>
    </message>
    <message id="addNewEventPageContentString11">
        <source>More</source>
        <translation>More</translation>
    </message>
    <message id="addNewEventPageGoNotiSettingPageString">
        <source>When to remind</source>
        <translation>When to remind</translation>
    </message>
    <message id="addNewEventPageGoRepeatEventSettingPageString">
        <source>Repeat rule</source>
        <translation>Repeat rule</translation>
    </message>
    <message id="addNewEventPageNavigationTitleStringAtaddNewEventPage">
        <source>Event Details</source>
        <translation>Event Details</translation>
    </message>
    <message id="addNewEventPagePickerForAddMemoToThisEventTrue">
        <source>Keep memos for this event</source>
        <translation>Keep memos for this event</translation>
    </message>
    <message id="addNewEventPagePickerForAddStarTrue">
        <source>Star this event</source>
        <translation>Star this event</translation>
    </message>
    <message id="addNewEventPagePickerForEventType1">
        <source>Daily</source>
        <translation>Daily</translation>
    </message>
    <message id="addNewEventPagePickerForEventType2">
        <source>Weekly</source>
        <translation>Weekly</translation>
    </message>
    <message id="addNewEventPagePickerForEventType3">
        <source>Monthly</source>
        <translation>Monthly</translation>
    </message>
    <message id="addNewEventPagePickerForEventType4">
        <source>Yearly</source>
        <translation>Yearly</translation>
    </message>
    <message id="addNewEventPagePickerForHaveOneEndDateForRepeatEventTrue">
        <source>Stop repeating on a date</source>
        <translation>Stop repeating on a date</translation>
    </message>
    <message id="addNewEventPagePickerForRepeatOrNotTrue">
        <source>Repeat this event</source>
        <translation>Repeat this event</translation>
    </message>
    <message id="addNewEventPagePickerForSetNotiForThisNotReapeatEventTrue">
        <source>Remind me</source>
        <translation>Remind me</translation>
    </message>
    <message id="addNewEventPageTitleSpaceholderString">
        <source>Title</source>
        <translation>Title</translation>
    </message>
    <message id="alert title text for cloud func not active because id changed at cloudkit page">
        <source>Another account</source>
        <translation>Another account</translation>
    </message>
    <message id="alert title text for download all data at cloudkit page">
        <source>Restore everything?</source>
        <translation>Restore everything?</translation>
    </message>
    <message id="alert title text for upload all data at cloudkit page">
        <source>Back up everything?</source>
        <translation>Back up everything?</translation>
    </message>
    <message id="alertButtonCancelStringForForDeleteThisEventAtCardView">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="alertButtonStringForForDeleteThisEventAtCardView">
        <source>Delete event</source>
        <translation>Delete event</translation>
    </message>
    <message id="alertButtonStringForNeedMoreInfoAtAddNewEventPage">
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message id="alertMessageStringForNeedMoreInfoAtAddNewEventPage_nothingChanged">
        <source>Nothing has changed.</source>
        <translation>Nothing has changed.</translation>
    </message>
    <message id="alertMessageStringForNeedMoreInfoAtAddNewEventPage_noti">
        <source>Choose when to be reminded, or turn the reminder off.</source>
        <translation>Choose when to be reminded, or turn the reminder off.</translation>
    </message>
    <message id="alertMessageStringForNeedMoreInfoAtAddNewEventPage_repeat">
        <source>Choose how the event repeats, or turn repeating off.</source>
        <translation>Choose how the event repeats, or turn repeating off.</translation>
    </message>
    <message id="alertMessageStringForNeedMoreInfoAtAddNewEventPage_share">
        <source>Choose a group to share with, or turn sharing off.</source>
        <translation>Choose a group to share with, or turn sharing off.</translation>
    </message>
    <message id="alertMessageStringForNeedMoreInfoAtAddNewEventPage_title">
        <source>Give the event a title.</source>
        <translation>Give the event a title.</translation>
    </message>
    <message id="alertTitleStringForNeedMoreInfoAtAddNewEventPage">
        <source>A little more, please</source>
        <translation>A little more, please</translation>
    </message>
    <message id="allColorsHintStringAtFilterPage">
        <source>Tap the chosen colour again to show every colour</source>
        <translation>Tap the chosen colour again to show every colour</translation>
    </message>
    <message id="alwaysDarkStringAtFilterPage">
        <source>Dark</source>
        <translation>Dark</translation>
    </message>
    <message id="alwaysLightStringAtFilterPage">
        <source>Light</source>
        <translation>Light</translation>
    </message>
    <message id="appDisplayName">
        <source>Tide Mark</source>
        <translation>Tide Mark</translation>
    </message>
    <message id="appLockSettingRowDetailString">
        <source>Applies at the next launch: Tide Mark then asks for your password or fingerprint first.</source>
        <translation>Applies at the next launch: Tide Mark then asks for your password or fingerprint first.</translation>
    </message>
    <message id="appLockSettingRowTitleString">
        <source>App lock</source>
        <translation>App lock</translation>
    </message>
    <message id="appLockSettingRowUnavailableString">
        <source>Not available: this system has no way to confirm that it's you.</source>
        <translation>Not available: this system has no way to confirm that it's you.</translation>
    </message>
    <message id="appUpdateInfoAtAboutPage">
        <source>Updated</source>
        <translation>Updated</translation>
    </message>
    <message id="appVersionInfoAtAboutPage">
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message id="appearanceSectionTitleStringAtFilterPage">
        <source>Appearance</source>
        <translation>Appearance</translation>
    </message>
    <message id="backgroundPlainStringAtBackgroundPopup">
        <source>Plain</source>
        <translation>Plain</translation>
    </message>
    <message id="backgroundTideStringAtBackgroundPopup">
        <source>Tide</source>
        <translation>Tide</translation>
    </message>
    <message id="brandNewVerticalCardViewTitle">
        <source>Stacked cards</source>
        <translation>Stacked cards</translation>
    </message>
    <message id="button label text for cloud func not active because id changed at cloudkit page">
        <source>Use this account</source>
        <translation>Use this account</translation>
    </message>
    <message id="button label text for download all data at cloudkit page">
        <source>Restore</source>
        <translation>Restore</translation>
    </message>
    <message id="button label text for upload all data at cloudkit page">
        <source>Back up</source>
        <translation>Back up</translation>
    </message>
    <message id="calendarFileGroupTitle">
        <source>Calendar files</source>
        <translation>Calendar files</translation>
    </message>
    <message id="changeBackgroundImageMenuAtBrandNewSettingView">
        <source>Background</source>
        <translation>Background</translation>
    </message>
    <message id="changeEventSettingWillCloseNotiSettingStringAtEditEventPage">
        <source>Changing the repeat type turns this event's reminder off.</source>
        <translation>Changing the repeat type turns this event's reminder off.</translation>
    </message>
    <message id="chooseFileButton">
        <source>Choose…</source>
        <translation>Choose…</translation>
    </message>
    <message id="cloudArrivesLaterNoteString">
        <source>Backup to and restore from your own WebDAV server (Nextcloud, ownCloud and others) arrive in a later version. Your events stay on this device until then.</source>
        <translation>Backup to and restore from your own WebDAV server (Nextcloud, ownCloud and others) arrive in a later version. Your events stay on this device until then.</translation>
    </message>
    <message id="cloudConnectionFailedString">
        <source>The server does not accept this account: %1</source>
        <translation>The server does not accept this account: %1</translation>
    </message>
    <message id="cloudConnectionOkString">
        <source>The server answers: your account is available.</source>
        <translation>The server answers: your account is available.</translation>
    </message>
    <message id="cloudFuncStatusOffTitleStringAtNotiSettingSubViewPage">
        <source>Cloud backup is off</source>
        <translation>Cloud backup is off</translation>
    </message>
    <message id="cloudFuncStatusOnTitleStringAtNotiSettingSubViewPage">
        <source>Cloud backup is on</source>
        <translation>Cloud backup is on</translation>
    </message>
    <message id="cloudPasswordInMemoryString">
        <source>No keyring answers on this desktop: the password is kept only until Tide Mark closes.</source>
        <translation>No keyring answers on this desktop: the password is kept only until Tide Mark closes.</translation>
    </message>
    <message id="cloudPasswordString">
        <source>Password</source>
        <translation>Password</translation>
    </message>
    <message id="cloudRecordsDoneString">
        <source>%1 of %2 records</source>
        <translation>%1 of %2 records</translation>
    </message>
    <message id="cloudServerAddressInvalidString">
        <source>Enter the address of your server, beginning with https:// (or http://).</source>
        <translation>Enter the address of your server, beginning with https:// (or http://).</translation>
    </message>
    <message id="cloudServerAddressPlaceholderString">
        <source>https://cloud.example.org/remote.php/dav/files/me/</source>
        <translation>https://cloud.example.org/remote.php/dav/files/me/</translation>
    </message>
    <message id="cloudServerAddressString">
        <source>Server address</source>
        <translation>Server address</translation>
    </message>
    <message id="cloudTestConnectionButtonString">
        <source>Test connection</source>
        <translation>Test connection</translation>
    </message>
    <message id="cloudTrustCertificateButtonString">
        <source>Trust this certificate</source>
        <translation>Trust this certificate</translation>
    </message>
    <message id="cloudUserNameString">
        <source>User name</source>
        <translation>User name</translation>
    </message>
    <message id="colorSectionTitleStringAtFilterPage">
        <source>Colour</source>
        <translation>Colour</translation>
    </message>
    <message id="colorTitleStringAtCardViewForEventObject">
        <source>Colour</source>
        <translation>Colour</translation>
    </message>
    <message id="customizeIntervalExplanationString">
        <source>The number is how many days, weeks, months or years are skipped between two repeats.</source>
        <translation>The number is how many days, weeks, months or years are skipped between two repeats.</translation>
    </message>
    <message id="customizeIntervalStringBeforeNum">
        <source>Every </source>
        <translation>Every </translation>
    </message>
    <message id="customizeStringAfterNumByDay">
        <source> days</source>
        <translation> days</translation>
    </message>
    <message id="customizeStringAfterNumByMonth">
        <source> months</source>
        <translation> months</translation>
    </message>
    <message id="customizeStringAfterNumByWeek">
        <source> weeks</source>
        <translation> weeks</translation>
    </message>
    <message id="customizeStringAfterNumByYear">
        <source> years</source>
        <translation> years</translation>
    </message>
    <message id="customizeStringBeforeNum">
        <source>Repeats</source>
        <translation>Repeats</translation>
    </message>
    <message id="customizeStringBeforeNumAfterEveryWord">
        <source> every</source>
        <translation> every</translation>
    </message>
    <message id="damagedFileNoticeOkString">
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message id="damagedFileNoticeTitleString">
        <source>A file could not be read</source>
        <translation>A file could not be read</translation>
    </message>
    <message id="damagedRemindersFileNoticeString">
        <source>The reminders file could not be read. It was kept aside as “%1” and your reminders were planned again from your events.</source>
        <translation>The reminders file could not be read. It was kept aside as “%1” and your reminders were planned again from your events.</translation>
    </message>
    <message id="damagedSettingsFileNoticeString">
        <source>Your settings file could not be read. It was kept aside as “%1” and Tide Mark started with fresh settings, as on a new installation. Your events are not affected.</source>
        <translation>Your settings file could not be read. It was kept aside as “%1” and Tide Mark started with fresh settings, as on a new installation. Your events are not affected.</translation>
    </message>
    <message id="damagedSharedSettingsFileNoticeString">
        <source>The widgets' data file could not be read. It was kept aside as “%1” and made again from your events.</source>
        <translation>The widgets' data file could not be read. It was kept aside as “%1” and made again from your events.</translation>
    </message>
    <message id="downloadAllDataNowButtonAtCloudKitPage">
        <source>Restore now</source>
        <translation>Restore now</translation>
    </message>
    <message id="downloadAllDataNowTextAtCloudKitPage">
        <source>Reads every event and memo from your server; records of the same name on this device are replaced, none is deleted.</source>
        <translation>Reads every event and memo from your server; records of the same name on this device are replaced, none is deleted.</translation>
    </message>
    <message id="editEventNotiSettingNavigationTitleStringAtRepeatEventSettingPage">
        <source>Reminder</source>
        <translation>Reminder</translation>
    </message>
    <message id="editEventRepeatSettingNavigationTitleStringAtRepeatEventSettingPage">
        <source>Repeat</source>
        <translation>Repeat</translation>
    </message>
    <message id="editMemoTitleStringAtMemoForCardViewPage">
        <source>Edit memo</source>
        <translation>Edit memo</translation>
    </message>
    <message id="editSectionTitleStringAtCardViewForEventObject">
        <source>Edit</source>
        <translation>Edit</translation>
    </message>
    <message id="editShareAtCardViewForEventObjcetTitleString">
        <source>Sharing</source>
        <translation>Sharing</translation>
    </message>
    <message id="editStartDateAtCardViewForEventObjcetTitleString">
        <source>Dates</source>
        <translation>Dates</translation>
    </message>
    <message id="editTitleContentAtCardViewForEventObjcetTitleString">
        <source>Title and notes</source>
        <translation>Title and notes</translation>
    </message>
    <message id="endDateSettingTitleStringAtEditEventStartDatePage">
        <source>End date</source>
        <translation>End date</translation>
    </message>
    <message id="endEventSectionTitleStringAtFilterPage">
        <source>Ended events</source>
        <translation>Ended events</translation>
    </message>
    <message id="eventAlreadyEndStringForListRowViewForTimeline">
        <source>Ended</source>
        <translation>Ended</translation>
    </message>
    <message id="eventGoneStringAtCardViewForEventObject">
        <source>This event no longer exists.</source>
        <translation>This event no longer exists.</translation>
    </message>
    <message id="eventInfoAtOnboardPageContentString">
        <source>A sample event: Tide Mark counts the days until the new year begins.</source>
        <translation>A sample event: Tide Mark counts the days until the new year begins.</translation>
    </message>
    <message id="eventInfoAtOnboardPageTitleString">
        <source>New Year's Day</source>
        <translation>New Year's Day</translation>
    </message>
    <message id="eventViewChooseButton">
        <source>Choose event</source>
        <translation>Choose event</translation>
    </message>
    <message id="eventViewDateRange0">
        <source>Next 7 days</source>
        <translation>Next 7 days</translation>
    </message>
    <message id="eventViewDateRange1">
        <source>Next 30 days</source>
        <translation>Next 30 days</translation>
    </message>
    <message id="eventViewDateRange2">
        <source>Next 365 days</source>
        <translation>Next 365 days</translation>
    </message>
    <message id="eventViewDateRangeMenuTitle">
        <source>Date range</source>
        <translation>Date range</translation>
    </message>
    <message id="eventViewNoEventChosen">
        <source>Choose an event to show here.</source>
        <translation>Choose an event to show here.</translation>
    </message>
    <message id="eventViewTitle">
        <source>Day and event</source>
        <translation>Day and event</translation>
    </message>
    <message id="eventViewTodayLabel">
        <source>Today %1, %2 o'clock</source>
        <translation>Today %1, %2 o'clock</translation>
    </message>
    <message id="exportButton">
        <source>Export</source>
        <translation>Export</translation>
    </message>
    <message id="exportDone">
        <source>%1 events written to %2: %3 repeat by a rule, %4 are single dates, %5 as their dates of the next five years.</source>
        <translation>%1 events written to %2: %3 repeat by a rule, %4 are single dates, %5 as their dates of the next five years.</translation>
    </message>
    <message id="exportFailed">
        <source>Could not write %1: %2</source>
        <translation>Could not write %1: %2</translation>
    </message>
    <message id="exportFileLabel">
        <source>File</source>
        <translation>File</translation>
    </message>
    <message id="exportPageExplanation">
        <source>Writes every event into one iCalendar file (.ics) that GNOME Calendar, Thunderbird, KOrganizer and CalDAV clients read. Rules that another calendar can't repeat exactly are written as their dates of the next five years.</source>
        <translation>Writes every event into one iCalendar file (.ics) that GNOME Calendar, Thunderbird, KOrganizer and CalDAV clients read. Rules that another calendar can't repeat exactly are written as their dates of the next five years.</translation>
    </message>
    <message id="exportPageTitle">
        <source>Export to calendar file</source>
        <translation>Export to calendar file</translation>
    </message>
    <message id="exportToCalendarFileRow">
        <source>Export to calendar file</source>
        <translation>Export to calendar file</translation>
    </message>
    <message id="feedback&amp;BugsAtSettingPage">
        <source>Feedback &amp; bugs</source>
        <translation>Feedback &amp; bugs</translation>
    </message>
    <message id="filterContentPageNavigationTitleStringAtFilterPage">
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message id="followSystemStringAtFilterPage">
        <source>System</source>
        <translation>System</translation>
    </message>
    <message id="footerMakerLineString">
        <source>Made with care by the Tide Mark developers</source>
        <translation>Made with care by the Tide Mark developers</translation>
    </message>
    <message id="footerRegistrationLineString">
        <source>Website registration: tidemark.org (filing in progress)</source>
        <translation>Website registration: tidemark.org (filing in progress)</translation>
    </message>
    <message id="goToIcloudSettingPageAtSettingPage">
        <source>Cloud backup</source>
        <translation>Cloud backup</translation>
    </message>
    <message id="headerForAppInfoSectionStringAtAboutPage">
        <source>This app</source>
        <translation>This app</translation>
    </message>
    <message id="headerForOtherAppFromDevSectionStringAtAboutPage">
        <source>From the developers</source>
        <translation>From the developers</translation>
    </message>
    <message id="headerForShareAndRateSectionStringAtAboutPage">
        <source>Share and rate</source>
        <translation>Share and rate</translation>
    </message>
    <message id="helpAnswerString01">
        <source>Tap the plus button at the bottom right (or press Ctrl+N), give the event a title and a date, and tap the check mark.</source>
        <translation>Tap the plus button at the bottom right (or press Ctrl+N), give the event a title and a date, and tap the check mark.</translation>
    </message>
    <message id="helpAnswerString02">
        <source>In the form, turn on Repeat and choose every day, week, month or year. An interval lets an event come every second week, every third month and so on.</source>
        <translation>In the form, turn on Repeat and choose every day, week, month or year. An interval lets an event come every second week, every third month and so on.</translation>
    </message>
    <message id="helpAnswerString03">
        <source>Check that reminders are on in Settings and that your desktop shows notifications. Reminders are planned for the next 60 occurrences and renewed every few hours.</source>
        <translation>Check that reminders are on in Settings and that your desktop shows notifications. Reminders are planned for the next 60 occurrences and renewed every few hours.</translation>
    </message>
    <message id="helpAnswerString04">
        <source>On the list tab, choose a kind in the title menu, or use the filter button for colours and ended events. The timeline shows the same list, newest first.</source>
        <translation>On the list tab, choose a kind in the title menu, or use the filter button for colours and ended events. The timeline shows the same list, newest first.</translation>
    </message>
    <message id="helpAnswerString05">
        <source>Ctrl+N adds an event, Escape closes the page or popup on top, and the date pickers take Page Up and Page Down.</source>
        <translation>Ctrl+N adds an event, Escape closes the page or popup on top, and the date pickers take Page Up and Page Down.</translation>
    </message>
    <message id="helpQuestionString01">
        <source>How do I add an event?</source>
        <translation>How do I add an event?</translation>
    </message>
    <message id="helpQuestionString02">
        <source>How do repeating events work?</source>
        <translation>How do repeating events work?</translation>
    </message>
    <message id="helpQuestionString03">
        <source>Why did a reminder not arrive?</source>
        <translation>Why did a reminder not arrive?</translation>
    </message>
    <message id="helpQuestionString04">
        <source>How do I find an event quickly?</source>
        <translation>How do I find an event quickly?</translation>
    </message>
    <message id="helpQuestionString05">
        <source>Which keys can I use on a desktop?</source>
        <translation>Which keys can I use on a desktop?</translation>
    </message>
    <message id="helpSubPageNavigationTitleString">
        <source>Help</source>
        <translation>Help</translation>
    </message>
    <message id="importAddButton">
        <source>Add %1 events</source>
        <translation>Add %1 events</translation>
    </message>
    <message id="importAnniversaryTitle">
        <source>%1's anniversary</source>
        <translation>%1's anniversary</translation>
    </message>
    <message id="importBirthdayTitle">
        <source>%1's birthday</source>
        <translation>%1's birthday</translation>
    </message>
    <message id="importCancelButton">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="importChooseButton">
        <source>Choose file…</source>
        <translation>Choose file…</translation>
    </message>
    <message id="importDatesRule">
        <source>on dates of its own</source>
        <translation>on dates of its own</translation>
    </message>
    <message id="importDeclined">
        <source>Nothing was added.</source>
        <translation>Nothing was added.</translation>
    </message>
    <message id="importDone">
        <source>%1 events added.</source>
        <translation>%1 events added.</translation>
    </message>
    <message id="importFailed">
        <source>Nothing was added: %1</source>
        <translation>Nothing was added: %1</translation>
    </message>
    <message id="importFirstDateNote">
        <source>Repeats in the original calendar: %1</source>
        <translation>Repeats in the original calendar: %1</translation>
    </message>
    <message id="importFromCalendarFileRow">
        <source>Import from calendar file</source>
        <translation>Import from calendar file</translation>
    </message>
    <message id="importKindAnniversary">
        <source>anniversary</source>
        <translation>anniversary</translation>
    </message>
    <message id="importKindBirthday">
        <source>birthday</source>
        <translation>birthday</translation>
    </message>
    <message id="importKindFirstDate">
        <source>first date only</source>
        <translation>first date only</translation>
    </message>
    <message id="importKindRule">
        <source>repeats</source>
        <translation>repeats</translation>
    </message>
    <message id="importKindSingle">
        <source>one date</source>
        <translation>one date</translation>
    </message>
    <message id="importNothingChosen">
        <source>No file chosen yet.</source>
        <translation>No file chosen yet.</translation>
    </message>
    <message id="importPageExplanation">
        <source>Choose a calendar file (.ics) or a contacts file (.vcf). You see what will be added before anything is added; events imported before are not added again.</source>
        <translation>Choose a calendar file (.ics) or a contacts file (.vcf). You see what will be added before anything is added; events imported before are not added again.</translation>
    </message>
    <message id="importPageTitle">
        <source>Import from calendar file</source>
        <translation>Import from calendar file</translation>
    </message>
    <message id="importQuestion">
        <source>Add these events? [y/N] </source>
        <translation>Add these events? [y/N] </translation>
    </message>
    <message id="importSkipAlreadyThere">
        <source>already in the date book</source>
        <translation>already in the date book</translation>
    </message>
    <message id="importSkipCancelled">
        <source>cancelled</source>
        <translation>cancelled</translation>
    </message>
    <message id="importSkipChangedOccurrence">
        <source>a changed date of a series</source>
        <translation>a changed date of a series</translation>
    </message>
    <message id="importSkipNoDate">
        <source>no date</source>
        <translation>no date</translation>
    </message>
    <message id="importSkipNotAnEvent">
        <source>not an event (a task or note)</source>
        <translation>not an event (a task or note)</translation>
    </message>
    <message id="importSkipUnreadableDate">
        <source>a date that can't be read</source>
        <translation>a date that can't be read</translation>
    </message>
    <message id="importSkippedHeader">
        <source>Left out</source>
        <translation>Left out</translation>
    </message>
    <message id="importSummary">
        <source>%1 events to add: %2 with their repeat rule, %3 single dates, %4 only their first date, %5 birthdays and anniversaries. %6 left out.</source>
        <translation>%1 events to add: %2 with their repeat rule, %3 single dates, %4 only their first date, %5 birthdays and anniversaries. %6 left out.</translation>
    </message>
    <message id="importToAddHeader">
        <source>To add</source>
        <translation>To add</translation>
    </message>
    <message id="importUnreadableFile">
        <source>%1 can't be read.</source>
        <translation>%1 can't be read.</translation>
    </message>
    <message id="kindSectionTitleStringAtFilterPage">
        <source>Show</source>
        <translation>Show</translation>
    </message>
    <message id="lastManuallyBackupTimeStringAtCloudKitPage">
        <source>Last manual backup</source>
        <translation>Last manual backup</translation>
    </message>
    <message id="lastSyncTimeStringAtCloudKitPage">
        <source>Last sync</source>
        <translation>Last sync</translation>
    </message>
    <message id="lightAndDarkMode">
        <source>Appearance</source>
        <translation>Appearance</translation>
    </message>
    <message id="lightAndDarkModeAUTO">
        <source>Follow the system</source>
        <translation>Follow the system</translation>
    </message>
    <message id="lightAndDarkModeAlwaysDark">
        <source>Always dark</source>
        <translation>Always dark</translation>
    </message>
    <message id="lightAndDarkModeAlwaysLight">
        <source>Always light</source>
        <translation>Always light</translation>
    </message>
    <message id="lockAndUnlockAppByFaceIDReasonStringAtFunc">
        <source>Unlock Tide Mark to see your events</source>
        <translation>Unlock Tide Mark to see your events</translation>
    </message>
    <message id="memoDateTitleStringAtMemoForCardViewPage">
        <source>Date and time</source>
        <translation>Date and time</translation>
    </message>
    <message id="menuButtonForTimelineViewShowEndEventOrNotFalseButtonString">
        <source>Hide ended events</source>
        <translation>Hide ended events</translation>
    </message>
    <message id="menuButtonForTimelineViewShowEndEventOrNotTrueButtonString">
        <source>Show ended events</source>
        <translation>Show ended events</translation>
    </message>
    <message id="menuShowAllEventStringForTimelineView">
        <source>All events</source>
        <translation>All events</translation>
    </message>
    <message id="menuShowNotRepeatEventStringForTimelineView">
        <source>One-off events</source>
        <translation>One-off events</translation>
    </message>
    <message id="menuShowRepeatType1EventStringForTimelineView">
        <source>Repeating events</source>
        <translation>Repeating events</translation>
    </message>
    <message id="menuShowRepeatType2EventStringForTimelineView">
        <source>Custom intervals</source>
        <translation>Custom intervals</translation>
    </message>
    <message id="menuShowStarEventStringForTimelineView">
        <source>Starred</source>
        <translation>Starred</translation>
    </message>
    <message id="menuTitleString01ForEventCardView">
        <source>Event card</source>
        <translation>Event card</translation>
    </message>
    <message id="menuTitleString02ForEventCardView">
        <source>Event details</source>
        <translation>Event details</translation>
    </message>
    <message id="message text for cloud func not active because id changed at cloudkit page">
        <source>This device used another account on your server before. Tide Mark will use the account now signed in from here on.</source>
        <translation>This device used another account on your server before. Tide Mark will use the account now signed in from here on.</translation>
    </message>
    <message id="message text for download all data at cloudkit page">
        <source>Every event and memo on your server is read into this device; records of the same name here are replaced.</source>
        <translation>Every event and memo on your server is read into this device; records of the same name here are replaced.</translation>
    </message>
    <message id="message text for upload all data at cloudkit page">
        <source>Every event and memo of this device is written to your server, over what it holds under the same names.</source>
        <translation>Every event and memo of this device is written to your server, over what it holds under the same names.</translation>
    </message>
    <message id="monthMutilSelectionsLastDayOfMonthUseGuideString">
        <source>The last-day cell picks the last day of every month, whatever its length.</source>
        <translation>The last-day cell picks the last day of every month, whatever its length.</translation>
    </message>
    <message id="monthMutilSelectionsSomeMonthDonotHave293031String">
        <source>Some months have no 29th, 30th or 31st: those months are left out for these days.</source>
        <translation>Some months have no 29th, 30th or 31st: those months are left out for these days.</translation>
    </message>
    <message id="monthSelectionNo99ForLastDayStringAtExplanation">
        <source>last day</source>
        <translation>last day</translation>
    </message>
    <message id="navigationTitleStringAtCardViewForEventObject">
        <source>Event</source>
        <translation>Event</translation>
    </message>
    <message id="navigationTitleStringAtEditEventTitleContentPage">
        <source>Title and notes</source>
        <translation>Title and notes</translation>
    </message>
    <message id="navigationTitleStringAtMemoForCardViewPage">
        <source>Memos</source>
        <translation>Memos</translation>
    </message>
    <message id="nextDateLabelStringForListRowViewForTimeline">
        <source>Next: </source>
        <translation>Next: </translation>
    </message>
    <message id="nextDatesTitleStringAtCardViewForEventObject">
        <source>Next dates</source>
        <translation>Next dates</translation>
    </message>
    <message id="nextFewDaysEventViewNaviLinkStringBigTitleAtBrandNewMainView">
        <source>Next few days</source>
        <translation>Next few days</translation>
    </message>
    <message id="nextWeek1StringAtComputeFuncPageForNextEventDate">
        <source>Next Monday</source>
        <translation>Next Monday</translation>
    </message>
    <message id="nextWeek2StringAtComputeFuncPageForNextEventDate">
        <source>Next Tuesday</source>
        <translation>Next Tuesday</translation>
    </message>
    <message id="nextWeek3StringAtComputeFuncPageForNextEventDate">
        <source>Next Wednesday</source>
        <translation>Next Wednesday</translation>
    </message>
    <message id="nextWeek4StringAtComputeFuncPageForNextEventDate">
        <source>Next Thursday</source>
        <translation>Next Thursday</translation>
    </message>
    <message id="nextWeek5StringAtComputeFuncPageForNextEventDate">
        <source>Next Friday</source>
        <translation>Next Friday</translation>
    </message>
    <message id="nextWeek6StringAtComputeFuncPageForNextEventDate">
        <source>Next Saturday</source>
        <translation>Next Saturday</translation>
    </message>
    <message id="noColorStringAtFilterPage">
        <source>No colour</source>
        <translation>No colour</translation>
    </message>
    <message id="noEventForTodayString">
        <source>No events on this day</source>
        <translation>No events on this day</translation>
    </message>
    <message id="noEventStoredString">
        <source>No events yet</source>
        <translation>No events yet</translation>
    </message>
    <message id="noMemoStringAtMemoForCardViewPage">
        <source>No memos yet. Tap + to add one.</source>
        <translation>No memos yet. Tap + to add one.</translation>
    </message>
    <message id="notStarredStringAtCardViewForEventObject">
        <source>Not starred</source>
        <translation>Not starred</translation>
    </message>
    <message id="noti0dayAgoBeforeEvent">
        <source>On the day</source>
        <translation>On the day</translation>
    </message>
    <message id="noti1dayAgoBeforeEvent">
        <source>1 day before</source>
        <translation>1 day before</translation>
    </message>
    <message id="noti1hourAgoBeforeEvent">
        <source>1 hour before</source>
        <translation>1 hour before</translation>
    </message>
    <message id="noti1monthAgoBeforeEvent">
        <source>1 month before</source>
        <translation>1 month before</translation>
    </message>
    <message id="noti1weekAgoBeforeEvent">
        <source>1 week before</source>
        <translation>1 week before</translation>
    </message>
    <message id="noti2weekAgoBeforeEvent">
        <source>2 weeks before</source>
        <translation>2 weeks before</translation>
    </message>
    <message id="noti30minsAgoBeforeEvent">
        <source>30 minutes before</source>
        <translation>30 minutes before</translation>
    </message>
    <message id="noti3dayAgoBeforeEvent">
        <source>3 days before</source>
        <translation>3 days before</translation>
    </message>
    <message id="noti3hourAgoBeforeEvent">
        <source>3 hours before</source>
        <translation>3 hours before</translation>
    </message>
    <message id="noti6hourAgoBeforeEvent">
        <source>6 hours before</source>
        <translation>6 hours before</translation>
    </message>
    <message id="notiNoSystemSettingsString">
        <source>This desktop has no notification settings page that Tide Mark can open. Notifications are set in your notification service's own settings.</source>
        <translation>This desktop has no notification settings page that Tide Mark can open. Notifications are set in your notification service's own settings.</translation>
    </message>
    <message id="notiNotAuthorizedExplanationString">
        <source>No notification service answers in this session, so reminders can't be shown. Start your desktop's notification service, then come back here.</source>
        <translation>No notification service answers in this session, so reminders can't be shown. Start your desktop's notification service, then come back here.</translation>
    </message>
    <message id="notiObjectsCountZero">
        <source>Nothing here yet</source>
        <translation>Nothing here yet</translation>
    </message>
    <message id="notiSettingSubViewNavigationTitleString">
        <source>Reminders</source>
        <translation>Reminders</translation>
    </message>
    <message id="notiStatusOffTitleStringAtNotiSettingSubViewPage">
        <source>Reminders are off</source>
        <translation>Reminders are off</translation>
    </message>
    <message id="notiStatusOnTitleStringAtNotiSettingSubViewPage">
        <source>Reminders are on</source>
        <translation>Reminders are on</translation>
    </message>
    <message id="onboardPageString01">
        <source>Welcome to Tide Mark</source>
        <translation>Welcome to Tide Mark</translation>
    </message>
    <message id="onboardPageString02">
        <source>Keep your dates, anniversaries and repeating events here, and see at a glance how many days remain.</source>
        <translation>Keep your dates, anniversaries and repeating events here, and see at a glance how many days remain.</translation>
    </message>
    <message id="projectSiteRowString">
        <source>Tide Mark on the web</source>
        <translation>Tide Mark on the web</translation>
    </message>
    <message id="reminderOpenActionString">
        <source>Open</source>
        <translation>Open</translation>
    </message>
    <message id="requestAuthorizationStringAtNotiSettingSubViewPage">
        <source>Open the system's notification settings</source>
        <translation>Open the system's notification settings</translation>
    </message>
    <message id="reviewButtonStringAtAboutPage">
        <source>Rate Tide Mark</source>
        <translation>Rate Tide Mark</translation>
    </message>
    <message id="selectOneEventForEventViewTitle">
        <source>Choose an event</source>
        <translation>Choose an event</translation>
    </message>
    <message id="settingVieNaviLinkStringBigTitleAtBrandNewMainView">
        <source>Settings</source>
        <translation>Settings</translation>
    </message>
    <message id="shareButtonStringAtAboutPage">
        <source>Share Tide Mark</source>
        <translation>Share Tide Mark</translation>
    </message>
    <message id="shareExplanationStringAtEditShareSettingPage">
        <source>Sharing with a group is shown here; it can't be changed yet.</source>
        <translation>Sharing with a group is shown here; it can't be changed yet.</translation>
    </message>
    <message id="shareGroupNoneStringAtEditShareSettingPage">
        <source>None</source>
        <translation>None</translation>
    </message>
    <message id="shareGroupTitleStringAtEditShareSettingPage">
        <source>Group</source>
        <translation>Group</translation>
    </message>
    <message id="shareImageCopiedNote">
        <source>The picture is on the clipboard.</source>
        <translation>The picture is on the clipboard.</translation>
    </message>
    <message id="shareImageCopyButton">
        <source>Copy picture</source>
        <translation>Copy picture</translation>
    </message>
    <message id="shareImageFailedNote">
        <source>The picture couldn't be handed on.</source>
        <translation>The picture couldn't be handed on.</translation>
    </message>
    <message id="shareImageMakingNote">
        <source>Making the picture…</source>
        <translation>Making the picture…</translation>
    </message>
    <message id="shareImageMenuTitle">
        <source>Share as picture</source>
        <translation>Share as picture</translation>
    </message>
    <message id="shareImageOpenButton">
        <source>Open with another app…</source>
        <translation>Open with another app…</translation>
    </message>
    <message id="shareImageSaveButton">
        <source>Save to a file…</source>
        <translation>Save to a file…</translation>
    </message>
    <message id="shareImageSaveDialogTitle">
        <source>Save the picture</source>
        <translation>Save the picture</translation>
    </message>
    <message id="shareImageSavedNote">
        <source>The picture is saved.</source>
        <translation>The picture is saved.</translation>
    </message>
    <message id="shareLinkCopiedStringAtSettingPage">
        <source>The app's web address is on the clipboard</source>
        <translation>The app's web address is on the clipboard</translation>
    </message>
    <message id="shareLinkNotCopiedStringAtSettingPage">
        <source>There is no clipboard to copy the address to</source>
        <translation>There is no clipboard to copy the address to</translation>
    </message>
    <message id="shareSettingSubPageNavigationTitleString">
        <source>Sharing</source>
        <translation>Sharing</translation>
    </message>
    <message id="shareStateOffStringAtEditShareSettingPage">
        <source>Off</source>
        <translation>Off</translation>
    </message>
    <message id="shareStateOnStringAtEditShareSettingPage">
        <source>On</source>
        <translation>On</translation>
    </message>
    <message id="shareStateTitleStringAtEditShareSettingPage">
        <source>Shared</source>
        <translation>Shared</translation>
    </message>
    <message id="slecectLastDayOfOneMonthStringAtRepeatEventSettingPage">
        <source>Last day</source>
        <translation>Last day</translation>
    </message>
    <message id="sourceCodeRowString">
        <source>Source code</source>
        <translation>Source code</translation>
    </message>
    <message id="stackCardPositionText">
        <source>%1 of %2</source>
        <translation>%1 of %2</translation>
    </message>
    <message id="stackCardViewTitle">
        <source>Cards across</source>
        <translation>Cards across</translation>
    </message>
    <message id="stackViewsMenuTitle">
        <source>Browse as cards</source>
        <translation>Browse as cards</translation>
    </message>
    <message id="starredStringAtCardViewForEventObject">
        <source>Starred</source>
        <translation>Starred</translation>
    </message>
    <message id="startDateSettingTitleStringAtEditEventStartDatePage">
        <source>Start date</source>
        <translation>Start date</translation>
    </message>
    <message id="stringForRepeatSettingExplanationEventDayTextAfterNum">
        <source> · </source>
        <translation> · </translation>
    </message>
    <message id="supportMeSubPageNavigationTitleString">
        <source>Support Tide Mark</source>
        <translation>Support Tide Mark</translation>
    </message>
    <message id="supportMeThanksTextString">
        <source>Tide Mark is made in spare time. If it helps you keep your dates, you can leave a small tip on its web page.</source>
        <translation>Tide Mark is made in spare time. If it helps you keep your dates, you can leave a small tip on its web page.</translation>
    </message>
    <message id="supportMeThanksTitleString">
        <source>Thank you for using Tide Mark</source>
        <translation>Thank you for using Tide Mark</translation>
    </message>
    <message id="supportMeTipButtonString">
        <source>Leave a tip</source>
        <translation>Leave a tip</translation>
    </message>
    <message id="supportMeUnlocksNothingString">
        <source>A tip is voluntary and unlocks nothing: every feature stays free for everyone.</source>
        <translation>A tip is voluntary and unlocks nothing: every feature stays free for everyone.</translation>
    </message>
    <message id="tellUserChoseOneCycleTimeForCycleOrNot=0">
        <source>Choose how often the event repeats.</source>
        <translation>Choose how often the event repeats.</translation>
    </message>
    <message id="tellUserChoseOneCycleTypeForNoti">
        <source>Choose when you want to be reminded.</source>
        <translation>Choose when you want to be reminded.</translation>
    </message>
    <message id="textForDayStringForListRowViewForTimeline">
        <source> days</source>
        <translation> days</translation>
    </message>
    <message id="textForEveryDayStringForListRowViewForTimeline">
        <source>Every day</source>
        <translation>Every day</translation>
    </message>
    <message id="textForEveryMonthStringForListRowViewForTimeline">
        <source>Every month</source>
        <translation>Every month</translation>
    </message>
    <message id="textForEveryWeekStringForListRowViewForTimeline">
        <source>Every week</source>
        <translation>Every week</translation>
    </message>
    <message id="textForEveryYearStringForListRowViewForTimeline">
        <source>Every year</source>
        <translation>Every year</translation>
    </message>
    <message id="thisWeek3StringAtComputeFuncPageForNextEventDate">
        <source>This Wednesday</source>
        <translation>This Wednesday</translation>
    </message>
    <message id="thisWeek4StringAtComputeFuncPageForNextEventDate">
        <source>This Thursday</source>
        <translation>This Thursday</translation>
    </message>
    <message id="thisWeek5StringAtComputeFuncPageForNextEventDate">
        <source>This Friday</source>
        <translation>This Friday</translation>
    </message>
    <message id="thisWeek6StringAtComputeFuncPageForNextEventDate">
        <source>This Saturday</source>
        <translation>This Saturday</translation>
    </message>
    <message id="thisWeek7StringAtComputeFuncPageForNextEventDate">
        <source>This Sunday</source>
        <translation>This Sunday</translation>
    </message>
    <message id="timelineButtonStringAtEventList">
        <source>Timeline</source>
        <translation>Timeline</translation>
    </message>
    <message id="todayStringAtComputeFuncPageForNextEventDate">
        <source>Today</source>
        <translation>Today</translation>
    </message>
    <message id="todayTextForDayCountStringForListRowViewForTimeline">
        <source>Today</source>
        <translation>Today</translation>
    </message>
    <message id="tomorrowStringAtComputeFuncPageForNextEventDate">
        <source>Tomorrow</source>
        <translation>Tomorrow</translation>
    </message>
    <message id="type1stringForRepeatSettingExplanation">
        <source>Every day at</source>
        <translation>Every day at</translation>
    </message>
    <message id="type2stringForRepeatSettingExplanation">
        <source>Every week</source>
        <translation>Every week</translation>
    </message>
    <message id="type3stringForRepeatSettingExplanation">
        <source>Every month: </source>
        <translation>Every month: </translation>
    </message>
    <message id="type4stringForRepeatSettingExplanation">
        <source>Every year on </source>
        <translation>Every year on </translation>
    </message>
    <message id="unlockAppCancelButtonString">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="unlockAppTapToTryAgainString">
        <source>Tap anywhere to try again</source>
        <translation>Tap anywhere to try again</translation>
    </message>
    <message id="unlockAppUnavailableString">
        <source>This system has no way to confirm that it's you, so Tide Mark stays locked.</source>
        <translation>This system has no way to confirm that it's you, so Tide Mark stays locked.</translation>
    </message>
    <message id="uploadAllDataNowButtonAtCloudKitPage">
        <source>Back up now</source>
        <translation>Back up now</translation>
    </message>
    <message id="uploadAllDataNowTextAtCloudKitPage">
        <source>Writes every event and memo of this device to your server.</source>
        <translation>Writes every event and memo of this device to your server.</translation>
    </message>
    <message id="verticalStackedCardsTitle">
        <source>Card stack</source>
        <translation>Card stack</translation>
    </message>
    <message id="weekForWeekMutilSelection01">
        <source>Mon</source>
        <translation>Mon</translation>
    </message>
    <message id="weekForWeekMutilSelection01AtSummaryViewSubPageForMonthlyAndWeeklyEvent">
        <source>Mon</source>
        <translation>Mon</translation>
    </message>
    <message id="weekForWeekMutilSelection02">
        <source>Tue</source>
        <translation>Tue</translation>
    </message>
    <message id="weekForWeekMutilSelection02AtSummaryViewSubPageForMonthlyAndWeeklyEvent">
        <source>Tue</source>
        <translation>Tue</translation>
    </message>
    <message id="weekForWeekMutilSelection03">
        <source>Wed</source>
        <translation>Wed</translation>
    </message>
    <message id="weekForWeekMutilSelection03AtSummaryViewSubPageForMonthlyAndWeeklyEvent">
        <source>Wed</source>
        <translation>Wed</translation>
    </message>
    <message id="weekForWeekMutilSelection04">
        <source>Thu</source>
        <translation>Thu</translation>
    </message>
    <message id="weekForWeekMutilSelection04AtSummaryViewSubPageForMonthlyAndWeeklyEvent">
        <source>Thu</source>
        <translation>Thu</translation>
    </message>
    <message id="weekForWeekMutilSelection05">
        <source>Fri</source>
        <translation>Fri</translation>
    </message>
    <message id="weekForWeekMutilSelection05AtSummaryViewSubPageForMonthlyAndWeeklyEvent">
        <source>Fri</source>
        <translation>Fri</translation>
    </message>
    <message id="weekForWeekMutilSelection06">
        <source>Sat</source>
        <translation>Sat</translation>
    </message>
    <message id="weekForWeekMutilSelection06AtSummaryViewSubPageForMonthlyAndWeeklyEvent">
        <source>Sat</source>
        <translation>Sat</translation>
    </message>
    <message id="weekForWeekMutilSelection07">
        <source>Sun</source>
        <translation>Sun</translation>
    </message>
    <message id="weekForWeekMutilSelection07AtSummaryViewSubPageForMonthlyAndWeeklyEvent">
        <source>Sun</source>
        <translation>Sun</translation>
    </message>
    <message id="weekForWeekMutilSelection08">
        <source>Mon–Fri</source>
        <translation>Mon–Fri</translation>
    </message>
    <message id="weekStringForListRowViewForTimeline01">
        <source>Mon</source>
        <translation>Mon</translation>
    </message>
    <message id="weekStringForListRowViewForTimeline02">
        <source>Tue</source>
        <translation>Tue</translation>
    </message>
    <message id="weekStringForListRowViewForTimeline03">
        <source>Wed</source>
        <translation>Wed</translation>
    </message>
    <message id="weekStringForListRowViewForTimeline04">
        <source>Thu</source>
        <translation>Thu</translation>
    </message>
    <message id="weekStringForListRowViewForTimeline05">
        <source>Fri</source>
        <translation>Fri</translation>
    </message>
    <message id="weekStringForListRowViewForTimeline06">
        <source>Sat</source>
        <translation>Sat</translation>
    </message>
    <message id="weekStringForListRowViewForTimeline07">
        <source>Sun</source>
        <translation>Sun</translation>
    </message>
    <message id="widgetChooseEventText">
        <source>Right-click to choose an event.</source>
        <translation>Right-click to choose an event.</translation>
    </message>
    <message id="widgetConfigureCancel">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="widgetConfigureDone">
        <source>Done</source>
        <translation>Done</translation>
    </message>
    <message id="widgetConfigureEventLabel">
        <source>Event</source>
        <translation>Event</translation>
    </message>
    <message id="widgetConfigureKindLabel">
        <source>Events to list</source>
        <translation>Events to list</translation>
    </message>
    <message id="widgetConfigureRemove">
        <source>Remove widget</source>
        <translation>Remove widget</translation>
    </message>
    <message id="widgetConfigureSizeLabel">
        <source>Size</source>
        <translation>Size</translation>
    </message>
    <message id="widgetConfigureTitle">
        <source>Widget settings</source>
        <translation>Widget settings</translation>
    </message>
    <message id="widgetEntryName">
        <source>Tide Mark widget</source>
        <translation>Tide Mark widget</translation>
    </message>
    <message id="widgetEventDeletedText">
        <source>This event was deleted.</source>
        <translation>This event was deleted.</translation>
    </message>
    <message id="widgetKind0">
        <source>All events (not chosen)</source>
        <translation>All events (not chosen)</translation>
    </message>
    <message id="widgetKind1">
        <source>All events</source>
        <translation>All events</translation>
    </message>
    <message id="widgetKind2">
        <source>One-off dates</source>
        <translation>One-off dates</translation>
    </message>
    <message id="widgetKind3">
        <source>Repeating events</source>
        <translation>Repeating events</translation>
    </message>
    <message id="widgetKind4">
        <source>Starred events</source>
        <translation>Starred events</translation>
    </message>
    <message id="widgetNoDataText">
        <source>Open Tide Mark once to show your events here.</source>
        <translation>Open Tide Mark once to show your events here.</translation>
    </message>
    <message id="widgetNoEventsOfKindText">
        <source>No events of this kind.</source>
        <translation>No events of this kind.</translation>
    </message>
    <message id="widgetSize_large">
        <source>Large</source>
        <translation>Large</translation>
    </message>
    <message id="widgetSize_lock">
        <source>Lock screen</source>
        <translation>Lock screen</translation>
    </message>
    <message id="widgetSize_medium">
        <source>Medium</source>
        <translation>Medium</translation>
    </message>
    <message id="widgetSize_small">
        <source>Small</source>
        <translation>Small</translation>
    </message>
</context>
</TS>
