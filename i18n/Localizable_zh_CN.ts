<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>Localizable</name>
    <message id="Feedback&amp;Bugs _ Tide Mark">
        <source>Feedback &amp; Bugs – Tide Mark</source>
        <translation>反馈与问题 – 潮记</translation>
    </message>
    <message id="Hello, World!">
        <source>Hello, World!</source>
        <translation>Hello, World!</translation>
    </message>
    <message id="aboutSubPageNavigationTitleString">
        <source>About</source>
        <translation>关于</translation>
    </message>
    <message id="addMemoTitleStringAtMemoForCardViewPage">
        <source>New memo</source>
        <translation>新备忘</translation>
    </message>
    <message id="addNewEventMemoContentSpaceholderString">
        <source>Notes (optional)</source>
        <translation>内容（可选）</translation>
    </message>
    <message id="addNewEventMemoTitleSpaceholderString">
        <source>Title</source>
        <translation>标题</translation>
    </message>
    <message id="addNewEventPageContentSpaceholderString">
        <source>Notes (optional)</source>
        <translation>内容（可选）</translation>
    </message>
    <message id="addNewEventPageContentString01">
        <source>Title and notes</source>
        <translation>标题与内容</translation>
    </message>
    <message id="addNewEventPageContentString01-1">
        <source>Date</source>
        <translation>日期</translation>
    </message>
    <message id="addNewEventPageContentString02">
        <source>Repeat</source>
        <translation>重复</translation>
    </message>
    <message id="addNewEventPageContentString02-3">
        <source>Custom interval</source>
        <translation>自定义间隔</translation>
    </message>
    <message id="addNewEventPageContentString02-endDateString">
        <source>End date</source>
        <translation>结束日期</translation>
    </message>
    <message id="addNewEventPageContentString03">
        <source>Reminder</source>
        <translation>提醒</translation>
    </message>
    <message id="addNewEventPageContentString11">
        <source>More</source>
        <translation>更多</translation>
    </message>
    <message id="addNewEventPageGoNotiSettingPageString">
        <source>When to remind</source>
        <translation>提醒时间</translation>
    </message>
    <message id="addNewEventPageGoRepeatEventSettingPageString">
        <source>Repeat rule</source>
        <translation>重复规则</translation>
    </message>
    <message id="addNewEventPageNavigationTitleStringAtaddNewEventPage">
        <source>Event Details</source>
        <translation>事件详情</translation>
    </message>
    <message id="addNewEventPagePickerForAddMemoToThisEventTrue">
        <source>Keep memos for this event</source>
        <translation>为此事件记录备忘</translation>
    </message>
    <message id="addNewEventPagePickerForAddStarTrue">
        <source>Star this event</source>
        <translation>标星此事件</translation>
    </message>
    <message id="addNewEventPagePickerForEventType1">
        <source>Daily</source>
        <translation>每天</translation>
    </message>
    <message id="addNewEventPagePickerForEventType2">
        <source>Weekly</source>
        <translation>每周</translation>
    </message>
    <message id="addNewEventPagePickerForEventType3">
        <source>Monthly</source>
        <translation>每月</translation>
    </message>
    <message id="addNewEventPagePickerForEventType4">
        <source>Yearly</source>
        <translation>每年</translation>
    </message>
    <message id="addNewEventPagePickerForHaveOneEndDateForRepeatEventTrue">
        <source>Stop repeating on a date</source>
        <translation>设置结束日期</translation>
    </message>
    <message id="addNewEventPagePickerForRepeatOrNotTrue">
        <source>Repeat this event</source>
        <translation>重复此事件</translation>
    </message>
    <message id="addNewEventPagePickerForSetNotiForThisNotReapeatEventTrue">
        <source>Remind me</source>
        <translation>提醒我</translation>
    </message>
    <message id="addNewEventPageTitleSpaceholderString">
        <source>Title</source>
        <translation>标题</translation>
    </message>
    <message id="alert title text for cloud func not active because id changed at cloudkit page">
        <source>Another account</source>
        <translation>账户已更换</translation>
    </message>
    <message id="alert title text for download all data at cloudkit page">
        <source>Restore everything?</source>
        <translation>恢复全部数据？</translation>
    </message>
    <message id="alert title text for upload all data at cloudkit page">
        <source>Back up everything?</source>
        <translation>备份全部数据？</translation>
    </message>
    <message id="alertButtonCancelStringForForDeleteThisEventAtCardView">
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message id="alertButtonStringForForDeleteThisEventAtCardView">
        <source>Delete event</source>
        <translation>删除事件</translation>
    </message>
    <message id="alertButtonStringForNeedMoreInfoAtAddNewEventPage">
        <source>OK</source>
        <translation>好的</translation>
    </message>
    <message id="alertMessageStringForNeedMoreInfoAtAddNewEventPage_nothingChanged">
        <source>Nothing has changed.</source>
        <translation>没有任何更改。</translation>
    </message>
    <message id="alertMessageStringForNeedMoreInfoAtAddNewEventPage_noti">
        <source>Choose when to be reminded, or turn the reminder off.</source>
        <translation>请选择提醒时间，或关闭提醒。</translation>
    </message>
    <message id="alertMessageStringForNeedMoreInfoAtAddNewEventPage_repeat">
        <source>Choose how the event repeats, or turn repeating off.</source>
        <translation>请选择重复方式，或关闭重复。</translation>
    </message>
    <message id="alertMessageStringForNeedMoreInfoAtAddNewEventPage_share">
        <source>Choose a group to share with, or turn sharing off.</source>
        <translation>请选择共享的群组，或关闭共享。</translation>
    </message>
    <message id="alertMessageStringForNeedMoreInfoAtAddNewEventPage_title">
        <source>Give the event a title.</source>
        <translation>请为事件填写标题。</translation>
    </message>
    <message id="alertTitleStringForNeedMoreInfoAtAddNewEventPage">
        <source>A little more, please</source>
        <translation>还差一点信息</translation>
    </message>
    <message id="allColorsHintStringAtFilterPage">
        <source>Tap the chosen colour again to show every colour</source>
        <translation>再次点击已选颜色即可显示全部颜色</translation>
    </message>
    <message id="alwaysDarkStringAtFilterPage">
        <source>Dark</source>
        <translation>深色</translation>
    </message>
    <message id="alwaysLightStringAtFilterPage">
        <source>Light</source>
        <translation>浅色</translation>
    </message>
    <message id="appDisplayName">
        <source>Tide Mark</source>
        <translation>潮记</translation>
    </message>
    <message id="appLockSettingRowDetailString">
        <source>Applies at the next launch: Tide Mark then asks for your password or fingerprint first.</source>
        <translation>下次启动时生效：潮记会先要求输入密码或验证指纹。</translation>
    </message>
    <message id="appLockSettingRowTitleString">
        <source>App lock</source>
        <translation>应用锁</translation>
    </message>
    <message id="appLockSettingRowUnavailableString">
        <source>Not available: this system has no way to confirm that it's you.</source>
        <translation>不可用：此系统无法确认你的身份。</translation>
    </message>
    <message id="appUpdateInfoAtAboutPage">
        <source>Updated</source>
        <translation>更新日期</translation>
    </message>
    <message id="appVersionInfoAtAboutPage">
        <source>Version</source>
        <translation>版本</translation>
    </message>
    <message id="appearanceSectionTitleStringAtFilterPage">
        <source>Appearance</source>
        <translation>外观</translation>
    </message>
    <message id="backgroundPlainStringAtBackgroundPopup">
        <source>Plain</source>
        <translation>纯色</translation>
    </message>
    <message id="backgroundTideStringAtBackgroundPopup">
        <source>Tide</source>
        <translation>潮汐</translation>
    </message>
    <message id="brandNewVerticalCardViewTitle">
        <source>Stacked cards</source>
        <translation>叠放卡片</translation>
    </message>
    <message id="button label text for cloud func not active because id changed at cloudkit page">
        <source>Use this account</source>
        <translation>使用此账户</translation>
    </message>
    <message id="button label text for download all data at cloudkit page">
        <source>Restore</source>
        <translation>恢复</translation>
    </message>
    <message id="button label text for upload all data at cloudkit page">
        <source>Back up</source>
        <translation>备份</translation>
    </message>
    <message id="calendarFileGroupTitle">
        <source>Calendar files</source>
        <translation>日历文件</translation>
    </message>
    <message id="changeBackgroundImageMenuAtBrandNewSettingView">
        <source>Background</source>
        <translation>背景</translation>
    </message>
    <message id="changeEventSettingWillCloseNotiSettingStringAtEditEventPage">
        <source>Changing the repeat type turns this event's reminder off.</source>
        <translation>更改重复类型会关闭此事件的提醒。</translation>
    </message>
    <message id="chooseFileButton">
        <source>Choose…</source>
        <translation>选择…</translation>
    </message>
    <message id="cloudArrivesLaterNoteString">
        <source>Backup to and restore from your own WebDAV server (Nextcloud, ownCloud and others) arrive in a later version. Your events stay on this device until then.</source>
        <translation>备份到你自己的 WebDAV 服务器（Nextcloud、ownCloud 等）以及从中恢复的功能将在后续版本中推出。在此之前，你的事件只保存在本设备上。</translation>
    </message>
    <message id="cloudConnectionFailedString">
        <source>The server does not accept this account: %1</source>
        <translation>服务器不接受此账户：%1</translation>
    </message>
    <message id="cloudConnectionOkString">
        <source>The server answers: your account is available.</source>
        <translation>服务器已响应：你的账户可用。</translation>
    </message>
    <message id="cloudFuncStatusOffTitleStringAtNotiSettingSubViewPage">
        <source>Cloud backup is off</source>
        <translation>云备份已关闭</translation>
    </message>
    <message id="cloudFuncStatusOnTitleStringAtNotiSettingSubViewPage">
        <source>Cloud backup is on</source>
        <translation>云备份已开启</translation>
    </message>
    <message id="cloudPasswordInMemoryString">
        <source>No keyring answers on this desktop: the password is kept only until Tide Mark closes.</source>
        <translation>此桌面没有可用的密钥环：密码只保留到 Tide Mark 关闭为止。</translation>
    </message>
    <message id="cloudPasswordString">
        <source>Password</source>
        <translation>密码</translation>
    </message>
    <message id="cloudRecordsDoneString">
        <source>%1 of %2 records</source>
        <translation>%1 / %2 条记录</translation>
    </message>
    <message id="cloudServerAddressInvalidString">
        <source>Enter the address of your server, beginning with https:// (or http://).</source>
        <translation>请输入服务器地址，以 https://（或 http://）开头。</translation>
    </message>
    <message id="cloudServerAddressPlaceholderString">
        <source>https://cloud.example.org/remote.php/dav/files/me/</source>
        <translation>https://cloud.example.org/remote.php/dav/files/me/</translation>
    </message>
    <message id="cloudServerAddressString">
        <source>Server address</source>
        <translation>服务器地址</translation>
    </message>
    <message id="cloudTestConnectionButtonString">
        <source>Test connection</source>
        <translation>测试连接</translation>
    </message>
    <message id="cloudTrustCertificateButtonString">
        <source>Trust this certificate</source>
        <translation>信任此证书</translation>
    </message>
    <message id="cloudUserNameString">
        <source>User name</source>
        <translation>用户名</translation>
    </message>
    <message id="colorSectionTitleStringAtFilterPage">
        <source>Colour</source>
        <translation>颜色</translation>
    </message>
    <message id="colorTitleStringAtCardViewForEventObject">
        <source>Colour</source>
        <translation>颜色</translation>
    </message>
    <message id="customizeIntervalExplanationString">
        <source>The number is how many days, weeks, months or years are skipped between two repeats.</source>
        <translation>数字表示两次重复之间跳过的天数、周数、月数或年数。</translation>
    </message>
    <message id="customizeIntervalStringBeforeNum">
        <source>Every </source>
        <translation>每</translation>
    </message>
    <message id="customizeStringAfterNumByDay">
        <source> days</source>
        <translation>天</translation>
    </message>
    <message id="customizeStringAfterNumByMonth">
        <source> months</source>
        <translation>个月</translation>
    </message>
    <message id="customizeStringAfterNumByWeek">
        <source> weeks</source>
        <translation>周</translation>
    </message>
    <message id="customizeStringAfterNumByYear">
        <source> years</source>
        <translation>年</translation>
    </message>
    <message id="customizeStringBeforeNum">
        <source>Repeats</source>
        <translation>重复</translation>
    </message>
    <message id="customizeStringBeforeNumAfterEveryWord">
        <source> every</source>
        <translation>：每</translation>
    </message>
    <message id="damagedFileNoticeOkString">
        <source>OK</source>
        <translation>好</translation>
    </message>
    <message id="damagedFileNoticeTitleString">
        <source>A file could not be read</source>
        <translation>有文件无法读取</translation>
    </message>
    <message id="damagedRemindersFileNoticeString">
        <source>The reminders file could not be read. It was kept aside as “%1” and your reminders were planned again from your events.</source>
        <translation>提醒文件无法读取，已另存为“%1”，并已根据你的事件重新安排提醒。</translation>
    </message>
    <message id="damagedSettingsFileNoticeString">
        <source>Your settings file could not be read. It was kept aside as “%1” and Tide Mark started with fresh settings, as on a new installation. Your events are not affected.</source>
        <translation>设置文件无法读取，已另存为“%1”，Tide Mark 以全新设置启动，如同新安装。你的事件不受影响。</translation>
    </message>
    <message id="damagedSharedSettingsFileNoticeString">
        <source>The widgets' data file could not be read. It was kept aside as “%1” and made again from your events.</source>
        <translation>小组件数据文件无法读取，已另存为“%1”，并已根据你的事件重新生成。</translation>
    </message>
    <message id="downloadAllDataNowButtonAtCloudKitPage">
        <source>Restore now</source>
        <translation>立即恢复</translation>
    </message>
    <message id="downloadAllDataNowTextAtCloudKitPage">
        <source>Reads every event and memo from your server; records of the same name on this device are replaced, none is deleted.</source>
        <translation>从你的服务器读取所有事件和备忘；本设备上同名的记录会被替换，不会删除任何记录。</translation>
    </message>
    <message id="editEventNotiSettingNavigationTitleStringAtRepeatEventSettingPage">
        <source>Reminder</source>
        <translation>提醒</translation>
    </message>
    <message id="editEventRepeatSettingNavigationTitleStringAtRepeatEventSettingPage">
        <source>Repeat</source>
        <translation>重复</translation>
    </message>
    <message id="editMemoTitleStringAtMemoForCardViewPage">
        <source>Edit memo</source>
        <translation>编辑备忘</translation>
    </message>
    <message id="editSectionTitleStringAtCardViewForEventObject">
        <source>Edit</source>
        <translation>编辑</translation>
    </message>
    <message id="editShareAtCardViewForEventObjcetTitleString">
        <source>Sharing</source>
        <translation>共享</translation>
    </message>
    <message id="editStartDateAtCardViewForEventObjcetTitleString">
        <source>Dates</source>
        <translation>日期</translation>
    </message>
    <message id="editTitleContentAtCardViewForEventObjcetTitleString">
        <source>Title and notes</source>
        <translation>标题与内容</translation>
    </message>
    <message id="endDateSettingTitleStringAtEditEventStartDatePage">
        <source>End date</source>
        <translation>结束日期</translation>
    </message>
    <message id="endEventSectionTitleStringAtFilterPage">
        <source>Ended events</source>
        <translation>已结束的事件</translation>
    </message>
    <message id="eventAlreadyEndStringForListRowViewForTimeline">
        <source>Ended</source>
        <translation>已结束</translation>
    </message>
    <message id="eventGoneStringAtCardViewForEventObject">
        <source>This event no longer exists.</source>
        <translation>此事件已不存在。</translation>
    </message>
    <message id="eventInfoAtOnboardPageContentString">
        <source>A sample event: Tide Mark counts the days until the new year begins.</source>
        <translation>示例事件：潮记会为你倒数新年到来的天数。</translation>
    </message>
    <message id="eventInfoAtOnboardPageTitleString">
        <source>New Year's Day</source>
        <translation>元旦</translation>
    </message>
    <message id="eventViewChooseButton">
        <source>Choose event</source>
        <translation>选择事件</translation>
    </message>
    <message id="eventViewDateRange0">
        <source>Next 7 days</source>
        <translation>未来 7 天</translation>
    </message>
    <message id="eventViewDateRange1">
        <source>Next 30 days</source>
        <translation>未来 30 天</translation>
    </message>
    <message id="eventViewDateRange2">
        <source>Next 365 days</source>
        <translation>未来 365 天</translation>
    </message>
    <message id="eventViewDateRangeMenuTitle">
        <source>Date range</source>
        <translation>日期范围</translation>
    </message>
    <message id="eventViewNoEventChosen">
        <source>Choose an event to show here.</source>
        <translation>请选择要在此显示的事件。</translation>
    </message>
    <message id="eventViewTitle">
        <source>Day and event</source>
        <translation>当天与事件</translation>
    </message>
    <message id="eventViewTodayLabel">
        <source>Today %1, %2 o'clock</source>
        <translation>今天 %1，%2 时</translation>
    </message>
    <message id="exportButton">
        <source>Export</source>
        <translation>导出</translation>
    </message>
    <message id="exportDone">
        <source>%1 events written to %2: %3 repeat by a rule, %4 are single dates, %5 as their dates of the next five years.</source>
        <translation>已将 %1 个事件写入 %2：%3 个按规则重复，%4 个为单个日期，%5 个写成未来五年的日期。</translation>
    </message>
    <message id="exportFailed">
        <source>Could not write %1: %2</source>
        <translation>无法写入 %1：%2</translation>
    </message>
    <message id="exportFileLabel">
        <source>File</source>
        <translation>文件</translation>
    </message>
    <message id="exportPageExplanation">
        <source>Writes every event into one iCalendar file (.ics) that GNOME Calendar, Thunderbird, KOrganizer and CalDAV clients read. Rules that another calendar can't repeat exactly are written as their dates of the next five years.</source>
        <translation>把所有事件写入一个 iCalendar 文件（.ics），GNOME 日历、Thunderbird、KOrganizer 和 CalDAV 客户端都能读取。其他日历无法精确重复的规则会写成未来五年的具体日期。</translation>
    </message>
    <message id="exportPageTitle">
        <source>Export to calendar file</source>
        <translation>导出为日历文件</translation>
    </message>
    <message id="exportToCalendarFileRow">
        <source>Export to calendar file</source>
        <translation>导出为日历文件</translation>
    </message>
    <message id="feedback&amp;BugsAtSettingPage">
        <source>Feedback &amp; bugs</source>
        <translation>反馈与问题</translation>
    </message>
    <message id="filterContentPageNavigationTitleStringAtFilterPage">
        <source>Filter</source>
        <translation>筛选</translation>
    </message>
    <message id="followSystemStringAtFilterPage">
        <source>System</source>
        <translation>跟随系统</translation>
    </message>
    <message id="footerMakerLineString">
        <source>Made with care by the Tide Mark developers</source>
        <translation>由潮记开发者用心制作</translation>
    </message>
    <message id="footerRegistrationLineString">
        <source>Website registration: tidemark.org (filing in progress)</source>
        <translation>网站备案：tidemark.org（备案办理中）</translation>
    </message>
    <message id="goToIcloudSettingPageAtSettingPage">
        <source>Cloud backup</source>
        <translation>云备份</translation>
    </message>
    <message id="headerForAppInfoSectionStringAtAboutPage">
        <source>This app</source>
        <translation>本应用</translation>
    </message>
    <message id="headerForOtherAppFromDevSectionStringAtAboutPage">
        <source>From the developers</source>
        <translation>来自开发者</translation>
    </message>
    <message id="headerForShareAndRateSectionStringAtAboutPage">
        <source>Share and rate</source>
        <translation>分享与评分</translation>
    </message>
    <message id="helpAnswerString01">
        <source>Tap the plus button at the bottom right (or press Ctrl+N), give the event a title and a date, and tap the check mark.</source>
        <translation>点右下角的加号按钮（或按 Ctrl+N），填写标题和日期，然后点对勾。</translation>
    </message>
    <message id="helpAnswerString02">
        <source>In the form, turn on Repeat and choose every day, week, month or year. An interval lets an event come every second week, every third month and so on.</source>
        <translation>在表单中打开“重复”，选择每天、每周、每月或每年。设置间隔可以让事件每隔两周、每隔三个月等重复。</translation>
    </message>
    <message id="helpAnswerString03">
        <source>Check that reminders are on in Settings and that your desktop shows notifications. Reminders are planned for the next 60 occurrences and renewed every few hours.</source>
        <translation>请确认设置中的提醒已开启，并且桌面允许显示通知。提醒会为接下来的 60 次发生提前安排，并每隔几小时更新。</translation>
    </message>
    <message id="helpAnswerString04">
        <source>On the list tab, choose a kind in the title menu, or use the filter button for colours and ended events. The timeline shows the same list, newest first.</source>
        <translation>在列表页的标题菜单中选择类型，或用筛选按钮按颜色和已结束事件筛选。时间线以最新优先的顺序显示同一列表。</translation>
    </message>
    <message id="helpAnswerString05">
        <source>Ctrl+N adds an event, Escape closes the page or popup on top, and the date pickers take Page Up and Page Down.</source>
        <translation>Ctrl+N 添加事件，Esc 关闭最上层的页面或弹窗，日期选择器支持 Page Up 和 Page Down。</translation>
    </message>
    <message id="helpQuestionString01">
        <source>How do I add an event?</source>
        <translation>如何添加事件？</translation>
    </message>
    <message id="helpQuestionString02">
        <source>How do repeating events work?</source>
        <translation>重复事件如何工作？</translation>
    </message>
    <message id="helpQuestionString03">
        <source>Why did a reminder not arrive?</source>
        <translation>为什么没有收到提醒？</translation>
    </message>
    <message id="helpQuestionString04">
        <source>How do I find an event quickly?</source>
        <translation>如何快速找到事件？</translation>
    </message>
    <message id="helpQuestionString05">
        <source>Which keys can I use on a desktop?</source>
        <translation>在桌面上可以使用哪些按键？</translation>
    </message>
    <message id="helpSubPageNavigationTitleString">
        <source>Help</source>
        <translation>帮助</translation>
    </message>
    <message id="importAddButton">
        <source>Add %1 events</source>
        <translation>添加 %1 个事件</translation>
    </message>
    <message id="importAnniversaryTitle">
        <source>%1's anniversary</source>
        <translation>%1的纪念日</translation>
    </message>
    <message id="importBirthdayTitle">
        <source>%1's birthday</source>
        <translation>%1的生日</translation>
    </message>
    <message id="importCancelButton">
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message id="importChooseButton">
        <source>Choose file…</source>
        <translation>选择文件…</translation>
    </message>
    <message id="importDatesRule">
        <source>on dates of its own</source>
        <translation>按其自身的日期</translation>
    </message>
    <message id="importDeclined">
        <source>Nothing was added.</source>
        <translation>未添加任何内容。</translation>
    </message>
    <message id="importDone">
        <source>%1 events added.</source>
        <translation>已添加 %1 个事件。</translation>
    </message>
    <message id="importFailed">
        <source>Nothing was added: %1</source>
        <translation>未添加任何内容：%1</translation>
    </message>
    <message id="importFirstDateNote">
        <source>Repeats in the original calendar: %1</source>
        <translation>在原日历中重复：%1</translation>
    </message>
    <message id="importFromCalendarFileRow">
        <source>Import from calendar file</source>
        <translation>从日历文件导入</translation>
    </message>
    <message id="importKindAnniversary">
        <source>anniversary</source>
        <translation>纪念日</translation>
    </message>
    <message id="importKindBirthday">
        <source>birthday</source>
        <translation>生日</translation>
    </message>
    <message id="importKindFirstDate">
        <source>first date only</source>
        <translation>仅首个日期</translation>
    </message>
    <message id="importKindRule">
        <source>repeats</source>
        <translation>重复</translation>
    </message>
    <message id="importKindSingle">
        <source>one date</source>
        <translation>单个日期</translation>
    </message>
    <message id="importNothingChosen">
        <source>No file chosen yet.</source>
        <translation>尚未选择文件。</translation>
    </message>
    <message id="importPageExplanation">
        <source>Choose a calendar file (.ics) or a contacts file (.vcf). You see what will be added before anything is added; events imported before are not added again.</source>
        <translation>选择一个日历文件（.ics）或通讯录文件（.vcf）。添加之前会先显示将要添加的内容；以前导入过的事件不会重复添加。</translation>
    </message>
    <message id="importPageTitle">
        <source>Import from calendar file</source>
        <translation>从日历文件导入</translation>
    </message>
    <message id="importQuestion">
        <source>Add these events? [y/N] </source>
        <translation>添加这些事件吗？[y/N] </translation>
    </message>
    <message id="importSkipAlreadyThere">
        <source>already in the date book</source>
        <translation>已在日程本中</translation>
    </message>
    <message id="importSkipCancelled">
        <source>cancelled</source>
        <translation>已取消</translation>
    </message>
    <message id="importSkipChangedOccurrence">
        <source>a changed date of a series</source>
        <translation>系列中被修改的单个日期</translation>
    </message>
    <message id="importSkipNoDate">
        <source>no date</source>
        <translation>没有日期</translation>
    </message>
    <message id="importSkipNotAnEvent">
        <source>not an event (a task or note)</source>
        <translation>不是事件（任务或记事）</translation>
    </message>
    <message id="importSkipUnreadableDate">
        <source>a date that can't be read</source>
        <translation>无法读取的日期</translation>
    </message>
    <message id="importSkippedHeader">
        <source>Left out</source>
        <translation>已跳过</translation>
    </message>
    <message id="importSummary">
        <source>%1 events to add: %2 with their repeat rule, %3 single dates, %4 only their first date, %5 birthdays and anniversaries. %6 left out.</source>
        <translation>将添加 %1 个事件：%2 个带重复规则，%3 个单个日期，%4 个仅首个日期，%5 个生日和纪念日。跳过 %6 个。</translation>
    </message>
    <message id="importToAddHeader">
        <source>To add</source>
        <translation>将添加</translation>
    </message>
    <message id="importUnreadableFile">
        <source>%1 can't be read.</source>
        <translation>无法读取 %1。</translation>
    </message>
    <message id="kindSectionTitleStringAtFilterPage">
        <source>Show</source>
        <translation>显示</translation>
    </message>
    <message id="lastManuallyBackupTimeStringAtCloudKitPage">
        <source>Last manual backup</source>
        <translation>上次手动备份</translation>
    </message>
    <message id="lastSyncTimeStringAtCloudKitPage">
        <source>Last sync</source>
        <translation>上次同步</translation>
    </message>
    <message id="lightAndDarkMode">
        <source>Appearance</source>
        <translation>外观</translation>
    </message>
    <message id="lightAndDarkModeAUTO">
        <source>Follow the system</source>
        <translation>跟随系统</translation>
    </message>
    <message id="lightAndDarkModeAlwaysDark">
        <source>Always dark</source>
        <translation>始终深色</translation>
    </message>
    <message id="lightAndDarkModeAlwaysLight">
        <source>Always light</source>
        <translation>始终浅色</translation>
    </message>
    <message id="lockAndUnlockAppByFaceIDReasonStringAtFunc">
        <source>Unlock Tide Mark to see your events</source>
        <translation>解锁潮记以查看你的事件</translation>
    </message>
    <message id="memoDateTitleStringAtMemoForCardViewPage">
        <source>Date and time</source>
        <translation>日期与时间</translation>
    </message>
    <message id="menuButtonForTimelineViewShowEndEventOrNotFalseButtonString">
        <source>Hide ended events</source>
        <translation>隐藏已结束的事件</translation>
    </message>
    <message id="menuButtonForTimelineViewShowEndEventOrNotTrueButtonString">
        <source>Show ended events</source>
        <translation>显示已结束的事件</translation>
    </message>
    <message id="menuShowAllEventStringForTimelineView">
        <source>All events</source>
        <translation>全部事件</translation>
    </message>
    <message id="menuShowNotRepeatEventStringForTimelineView">
        <source>One-off events</source>
        <translation>单次事件</translation>
    </message>
    <message id="menuShowRepeatType1EventStringForTimelineView">
        <source>Repeating events</source>
        <translation>重复事件</translation>
    </message>
    <message id="menuShowRepeatType2EventStringForTimelineView">
        <source>Custom intervals</source>
        <translation>自定义间隔</translation>
    </message>
    <message id="menuShowStarEventStringForTimelineView">
        <source>Starred</source>
        <translation>星标事件</translation>
    </message>
    <message id="menuTitleString01ForEventCardView">
        <source>Event card</source>
        <translation>事件卡片</translation>
    </message>
    <message id="menuTitleString02ForEventCardView">
        <source>Event details</source>
        <translation>事件详情</translation>
    </message>
    <message id="message text for cloud func not active because id changed at cloudkit page">
        <source>This device used another account on your server before. Tide Mark will use the account now signed in from here on.</source>
        <translation>本设备之前在你的服务器上使用的是另一个账户。从现在起 Tide Mark 将使用当前登录的账户。</translation>
    </message>
    <message id="message text for download all data at cloudkit page">
        <source>Every event and memo on your server is read into this device; records of the same name here are replaced.</source>
        <translation>服务器上的所有事件和备忘将读入本设备；本设备上同名的记录会被替换。</translation>
    </message>
    <message id="message text for upload all data at cloudkit page">
        <source>Every event and memo of this device is written to your server, over what it holds under the same names.</source>
        <translation>本设备的所有事件和备忘将写入你的服务器，覆盖同名的内容。</translation>
    </message>
    <message id="monthMutilSelectionsLastDayOfMonthUseGuideString">
        <source>The last-day cell picks the last day of every month, whatever its length.</source>
        <translation>末日按钮会选择每个月的最后一天，无论该月有多少天。</translation>
    </message>
    <message id="monthMutilSelectionsSomeMonthDonotHave293031String">
        <source>Some months have no 29th, 30th or 31st: those months are left out for these days.</source>
        <translation>部分月份没有 29、30 或 31 日，这些月份将不会包含这些日期。</translation>
    </message>
    <message id="monthSelectionNo99ForLastDayStringAtExplanation">
        <source>last day</source>
        <translation>最后一天</translation>
    </message>
    <message id="navigationTitleStringAtCardViewForEventObject">
        <source>Event</source>
        <translation>事件</translation>
    </message>
    <message id="navigationTitleStringAtEditEventTitleContentPage">
        <source>Title and notes</source>
        <translation>标题与内容</translation>
    </message>
    <message id="navigationTitleStringAtMemoForCardViewPage">
        <source>Memos</source>
        <translation>备忘</translation>
    </message>
    <message id="nextDateLabelStringForListRowViewForTimeline">
        <source>Next: </source>
        <translation>下次：</translation>
    </message>
    <message id="nextDatesTitleStringAtCardViewForEventObject">
        <source>Next dates</source>
        <translation>接下来的日期</translation>
    </message>
    <message id="nextFewDaysEventViewNaviLinkStringBigTitleAtBrandNewMainView">
        <source>Next few days</source>
        <translation>最近几天</translation>
    </message>
    <message id="nextWeek1StringAtComputeFuncPageForNextEventDate">
        <source>Next Monday</source>
        <translation>下周一</translation>
    </message>
    <message id="nextWeek2StringAtComputeFuncPageForNextEventDate">
        <source>Next Tuesday</source>
        <translation>下周二</translation>
    </message>
    <message id="nextWeek3StringAtComputeFuncPageForNextEventDate">
        <source>Next Wednesday</source>
        <translation>下周三</translation>
    </message>
    <message id="nextWeek4StringAtComputeFuncPageForNextEventDate">
        <source>Next Thursday</source>
        <translation>下周四</translation>
    </message>
    <message id="nextWeek5StringAtComputeFuncPageForNextEventDate">
        <source>Next Friday</source>
        <translation>下周五</translation>
    </message>
    <message id="nextWeek6StringAtComputeFuncPageForNextEventDate">
        <source>Next Saturday</source>
        <translation>下周六</translation>
    </message>
    <message id="noColorStringAtFilterPage">
        <source>No colour</source>
        <translation>无颜色</translation>
    </message>
    <message id="noEventForTodayString">
        <source>No events on this day</source>
        <translation>这一天没有事件</translation>
    </message>
    <message id="noEventStoredString">
        <source>No events yet</source>
        <translation>还没有事件</translation>
    </message>
    <message id="noMemoStringAtMemoForCardViewPage">
        <source>No memos yet. Tap + to add one.</source>
        <translation>还没有备忘。轻点 + 添加。</translation>
    </message>
    <message id="notStarredStringAtCardViewForEventObject">
        <source>Not starred</source>
        <translation>未标星</translation>
    </message>
    <message id="noti0dayAgoBeforeEvent">
        <source>On the day</source>
        <translation>当天</translation>
    </message>
    <message id="noti1dayAgoBeforeEvent">
        <source>1 day before</source>
        <translation>提前 1 天</translation>
    </message>
    <message id="noti1hourAgoBeforeEvent">
        <source>1 hour before</source>
        <translation>提前 1 小时</translation>
    </message>
    <message id="noti1monthAgoBeforeEvent">
        <source>1 month before</source>
        <translation>提前 1 个月</translation>
    </message>
    <message id="noti1weekAgoBeforeEvent">
        <source>1 week before</source>
        <translation>提前 1 周</translation>
    </message>
    <message id="noti2weekAgoBeforeEvent">
        <source>2 weeks before</source>
        <translation>提前 2 周</translation>
    </message>
    <message id="noti30minsAgoBeforeEvent">
        <source>30 minutes before</source>
        <translation>提前 30 分钟</translation>
    </message>
    <message id="noti3dayAgoBeforeEvent">
        <source>3 days before</source>
        <translation>提前 3 天</translation>
    </message>
    <message id="noti3hourAgoBeforeEvent">
        <source>3 hours before</source>
        <translation>提前 3 小时</translation>
    </message>
    <message id="noti6hourAgoBeforeEvent">
        <source>6 hours before</source>
        <translation>提前 6 小时</translation>
    </message>
    <message id="notiNoSystemSettingsString">
        <source>This desktop has no notification settings page that Tide Mark can open. Notifications are set in your notification service's own settings.</source>
        <translation>此桌面没有可供潮记打开的通知设置页面。请在通知服务自身的设置中调整通知。</translation>
    </message>
    <message id="notiNotAuthorizedExplanationString">
        <source>No notification service answers in this session, so reminders can't be shown. Start your desktop's notification service, then come back here.</source>
        <translation>当前会话中没有可用的通知服务，因此无法显示提醒。请先启动桌面的通知服务，然后再回到这里。</translation>
    </message>
    <message id="notiObjectsCountZero">
        <source>Nothing here yet</source>
        <translation>这里还没有事件</translation>
    </message>
    <message id="notiSettingSubViewNavigationTitleString">
        <source>Reminders</source>
        <translation>提醒</translation>
    </message>
    <message id="notiStatusOffTitleStringAtNotiSettingSubViewPage">
        <source>Reminders are off</source>
        <translation>提醒已关闭</translation>
    </message>
    <message id="notiStatusOnTitleStringAtNotiSettingSubViewPage">
        <source>Reminders are on</source>
        <translation>提醒已开启</translation>
    </message>
    <message id="onboardPageString01">
        <source>Welcome to Tide Mark</source>
        <translation>欢迎使用潮记</translation>
    </message>
    <message id="onboardPageString02">
        <source>Keep your dates, anniversaries and repeating events here, and see at a glance how many days remain.</source>
        <translation>在这里记下日期、纪念日和重复事件，一眼看到还剩多少天。</translation>
    </message>
    <message id="projectSiteRowString">
        <source>Tide Mark on the web</source>
        <translation>潮记官网</translation>
    </message>
    <message id="reminderOpenActionString">
        <source>Open</source>
        <translation>打开</translation>
    </message>
    <message id="requestAuthorizationStringAtNotiSettingSubViewPage">
        <source>Open the system's notification settings</source>
        <translation>打开系统通知设置</translation>
    </message>
    <message id="reviewButtonStringAtAboutPage">
        <source>Rate Tide Mark</source>
        <translation>为潮记评分</translation>
    </message>
    <message id="selectOneEventForEventViewTitle">
        <source>Choose an event</source>
        <translation>选择事件</translation>
    </message>
    <message id="settingVieNaviLinkStringBigTitleAtBrandNewMainView">
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message id="shareButtonStringAtAboutPage">
        <source>Share Tide Mark</source>
        <translation>分享潮记</translation>
    </message>
    <message id="shareExplanationStringAtEditShareSettingPage">
        <source>Sharing with a group is shown here; it can't be changed yet.</source>
        <translation>这里显示与群组的共享情况，暂时无法更改。</translation>
    </message>
    <message id="shareGroupNoneStringAtEditShareSettingPage">
        <source>None</source>
        <translation>无</translation>
    </message>
    <message id="shareGroupTitleStringAtEditShareSettingPage">
        <source>Group</source>
        <translation>群组</translation>
    </message>
    <message id="shareImageCopiedNote">
        <source>The picture is on the clipboard.</source>
        <translation>图片已复制到剪贴板。</translation>
    </message>
    <message id="shareImageCopyButton">
        <source>Copy picture</source>
        <translation>复制图片</translation>
    </message>
    <message id="shareImageFailedNote">
        <source>The picture couldn't be handed on.</source>
        <translation>无法分享这张图片。</translation>
    </message>
    <message id="shareImageMakingNote">
        <source>Making the picture…</source>
        <translation>正在生成图片…</translation>
    </message>
    <message id="shareImageMenuTitle">
        <source>Share as picture</source>
        <translation>分享为图片</translation>
    </message>
    <message id="shareImageOpenButton">
        <source>Open with another app…</source>
        <translation>用其他应用打开…</translation>
    </message>
    <message id="shareImageSaveButton">
        <source>Save to a file…</source>
        <translation>保存为文件…</translation>
    </message>
    <message id="shareImageSaveDialogTitle">
        <source>Save the picture</source>
        <translation>保存图片</translation>
    </message>
    <message id="shareImageSavedNote">
        <source>The picture is saved.</source>
        <translation>图片已保存。</translation>
    </message>
    <message id="shareLinkCopiedStringAtSettingPage">
        <source>The app's web address is on the clipboard</source>
        <translation>应用网址已复制到剪贴板</translation>
    </message>
    <message id="shareLinkNotCopiedStringAtSettingPage">
        <source>There is no clipboard to copy the address to</source>
        <translation>没有可用的剪贴板来复制网址</translation>
    </message>
    <message id="shareSettingSubPageNavigationTitleString">
        <source>Sharing</source>
        <translation>共享</translation>
    </message>
    <message id="shareStateOffStringAtEditShareSettingPage">
        <source>Off</source>
        <translation>关闭</translation>
    </message>
    <message id="shareStateOnStringAtEditShareSettingPage">
        <source>On</source>
        <translation>开启</translation>
    </message>
    <message id="shareStateTitleStringAtEditShareSettingPage">
        <source>Shared</source>
        <translation>共享</translation>
    </message>
    <message id="slecectLastDayOfOneMonthStringAtRepeatEventSettingPage">
        <source>Last day</source>
        <translation>最后一天</translation>
    </message>
    <message id="sourceCodeRowString">
        <source>Source code</source>
        <translation>源代码</translation>
    </message>
    <message id="stackCardPositionText">
        <source>%1 of %2</source>
        <translation>第 %1 张，共 %2 张</translation>
    </message>
    <message id="stackCardViewTitle">
        <source>Cards across</source>
        <translation>横向卡片</translation>
    </message>
    <message id="stackViewsMenuTitle">
        <source>Browse as cards</source>
        <translation>卡片浏览</translation>
    </message>
    <message id="starredStringAtCardViewForEventObject">
        <source>Starred</source>
        <translation>已标星</translation>
    </message>
    <message id="startDateSettingTitleStringAtEditEventStartDatePage">
        <source>Start date</source>
        <translation>开始日期</translation>
    </message>
    <message id="stringForRepeatSettingExplanationEventDayTextAfterNum">
        <source> · </source>
        <translation>日 </translation>
    </message>
    <message id="supportMeSubPageNavigationTitleString">
        <source>Support Tide Mark</source>
        <translation>支持潮记</translation>
    </message>
    <message id="supportMeThanksTextString">
        <source>Tide Mark is made in spare time. If it helps you keep your dates, you can leave a small tip on its web page.</source>
        <translation>潮记是在业余时间开发的。如果它帮你记住了重要的日子，你可以在官网上留下一点小费。</translation>
    </message>
    <message id="supportMeThanksTitleString">
        <source>Thank you for using Tide Mark</source>
        <translation>感谢你使用潮记</translation>
    </message>
    <message id="supportMeTipButtonString">
        <source>Leave a tip</source>
        <translation>留下小费</translation>
    </message>
    <message id="supportMeUnlocksNothingString">
        <source>A tip is voluntary and unlocks nothing: every feature stays free for everyone.</source>
        <translation>小费完全自愿，不会解锁任何功能：所有功能对每个人都免费。</translation>
    </message>
    <message id="tellUserChoseOneCycleTimeForCycleOrNot=0">
        <source>Choose how often the event repeats.</source>
        <translation>请选择事件的重复方式。</translation>
    </message>
    <message id="tellUserChoseOneCycleTypeForNoti">
        <source>Choose when you want to be reminded.</source>
        <translation>请选择提醒时间。</translation>
    </message>
    <message id="textForDayStringForListRowViewForTimeline">
        <source> days</source>
        <translation>天</translation>
    </message>
    <message id="textForEveryDayStringForListRowViewForTimeline">
        <source>Every day</source>
        <translation>每天</translation>
    </message>
    <message id="textForEveryMonthStringForListRowViewForTimeline">
        <source>Every month</source>
        <translation>每月</translation>
    </message>
    <message id="textForEveryWeekStringForListRowViewForTimeline">
        <source>Every week</source>
        <translation>每周</translation>
    </message>
    <message id="textForEveryYearStringForListRowViewForTimeline">
        <source>Every year</source>
        <translation>每年</translation>
    </message>
    <message id="thisWeek3StringAtComputeFuncPageForNextEventDate">
        <source>This Wednesday</source>
        <translation>本周三</translation>
    </message>
    <message id="thisWeek4StringAtComputeFuncPageForNextEventDate">
        <source>This Thursday</source>
        <translation>本周四</translation>
    </message>
    <message id="thisWeek5StringAtComputeFuncPageForNextEventDate">
        <source>This Friday</source>
        <translation>本周五</translation>
    </message>
    <message id="thisWeek6StringAtComputeFuncPageForNextEventDate">
        <source>This Saturday</source>
        <translation>本周六</translation>
    </message>
    <message id="thisWeek7StringAtComputeFuncPageForNextEventDate">
        <source>This Sunday</source>
        <translation>本周日</translation>
    </message>
    <message id="timelineButtonStringAtEventList">
        <source>Timeline</source>
        <translation>时间线</translation>
    </message>
    <message id="todayStringAtComputeFuncPageForNextEventDate">
        <source>Today</source>
        <translation>今天</translation>
    </message>
    <message id="todayTextForDayCountStringForListRowViewForTimeline">
        <source>Today</source>
        <translation>今天</translation>
    </message>
    <message id="tomorrowStringAtComputeFuncPageForNextEventDate">
        <source>Tomorrow</source>
        <translation>明天</translation>
    </message>
    <message id="type1stringForRepeatSettingExplanation">
        <source>Every day at</source>
        <translation>每天</translation>
    </message>
    <message id="type2stringForRepeatSettingExplanation">
        <source>Every week</source>
        <translation>每周</translation>
    </message>
    <message id="type3stringForRepeatSettingExplanation">
        <source>Every month: </source>
        <translation>每月：</translation>
    </message>
    <message id="type4stringForRepeatSettingExplanation">
        <source>Every year on </source>
        <translation>每年 </translation>
    </message>
    <message id="unlockAppCancelButtonString">
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message id="unlockAppTapToTryAgainString">
        <source>Tap anywhere to try again</source>
        <translation>轻点任意位置重试</translation>
    </message>
    <message id="unlockAppUnavailableString">
        <source>This system has no way to confirm that it's you, so Tide Mark stays locked.</source>
        <translation>此系统无法确认你的身份，因此潮记保持锁定。</translation>
    </message>
    <message id="uploadAllDataNowButtonAtCloudKitPage">
        <source>Back up now</source>
        <translation>立即备份</translation>
    </message>
    <message id="uploadAllDataNowTextAtCloudKitPage">
        <source>Writes every event and memo of this device to your server.</source>
        <translation>将本设备的所有事件和备忘写入你的服务器。</translation>
    </message>
    <message id="verticalStackedCardsTitle">
        <source>Card stack</source>
        <translation>卡片堆叠</translation>
    </message>
    <message id="weekForWeekMutilSelection01">
        <source>Mon</source>
        <translation>周一</translation>
    </message>
    <message id="weekForWeekMutilSelection01AtSummaryViewSubPageForMonthlyAndWeeklyEvent">
        <source>Mon</source>
        <translation>一</translation>
    </message>
    <message id="weekForWeekMutilSelection02">
        <source>Tue</source>
        <translation>周二</translation>
    </message>
    <message id="weekForWeekMutilSelection02AtSummaryViewSubPageForMonthlyAndWeeklyEvent">
        <source>Tue</source>
        <translation>二</translation>
    </message>
    <message id="weekForWeekMutilSelection03">
        <source>Wed</source>
        <translation>周三</translation>
    </message>
    <message id="weekForWeekMutilSelection03AtSummaryViewSubPageForMonthlyAndWeeklyEvent">
        <source>Wed</source>
        <translation>三</translation>
    </message>
    <message id="weekForWeekMutilSelection04">
        <source>Thu</source>
        <translation>周四</translation>
    </message>
    <message id="weekForWeekMutilSelection04AtSummaryViewSubPageForMonthlyAndWeeklyEvent">
        <source>Thu</source>
        <translation>四</translation>
    </message>
    <message id="weekForWeekMutilSelection05">
        <source>Fri</source>
        <translation>周五</translation>
    </message>
    <message id="weekForWeekMutilSelection05AtSummaryViewSubPageForMonthlyAndWeeklyEvent">
        <source>Fri</source>
        <translation>五</translation>
    </message>
    <message id="weekForWeekMutilSelection06">
        <source>Sat</source>
        <translation>周六</translation>
    </message>
    <message id="weekForWeekMutilSelection06AtSummaryViewSubPageForMonthlyAndWeeklyEvent">
        <source>Sat</source>
        <translation>六</translation>
    </message>
    <message id="weekForWeekMutilSelection07">
        <source>Sun</source>
        <translation>周日</translation>
    </message>
    <message id="weekForWeekMutilSelection07AtSummaryViewSubPageForMonthlyAndWeeklyEvent">
        <source>Sun</source>
        <translation>日</translation>
    </message>
    <message id="weekForWeekMutilSelection08">
        <source>Mon–Fri</source>
        <translation>工作日</translation>
    </message>
    <message id="weekStringForListRowViewForTimeline01">
        <source>Mon</source>
        <translation>周一</translation>
    </message>
    <message id="weekStringForListRowViewForTimeline02">
        <source>Tue</source>
        <translation>周二</translation>
    </message>
    <message id="weekStringForListRowViewForTimeline03">
        <source>Wed</source>
        <translation>周三</translation>
    </message>
    <message id="weekStringForListRowViewForTimeline04">
        <source>Thu</source>
        <translation>周四</translation>
    </message>
    <message id="weekStringForListRowViewForTimeline05">
        <source>Fri</source>
        <translation>周五</translation>
    </message>
    <message id="weekStringForListRowViewForTimeline06">
        <source>Sat</source>
        <translation>周六</translation>
    </message>
    <message id="weekStringForListRowViewForTimeline07">
        <source>Sun</source>
        <translation>周日</translation>
    </message>
    <message id="widgetChooseEventText">
        <source>Right-click to choose an event.</source>
        <translation>右键点击以选择事件。</translation>
    </message>
    <message id="widgetConfigureCancel">
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message id="widgetConfigureDone">
        <source>Done</source>
        <translation>完成</translation>
    </message>
    <message id="widgetConfigureEventLabel">
        <source>Event</source>
        <translation>事件</translation>
    </message>
    <message id="widgetConfigureKindLabel">
        <source>Events to list</source>
        <translation>要列出的事件</translation>
    </message>
    <message id="widgetConfigureRemove">
        <source>Remove widget</source>
        <translation>移除小组件</translation>
    </message>
    <message id="widgetConfigureSizeLabel">
        <source>Size</source>
        <translation>尺寸</translation>
    </message>
    <message id="widgetConfigureTitle">
        <source>Widget settings</source>
        <translation>小组件设置</translation>
    </message>
    <message id="widgetEntryName">
        <source>Tide Mark widget</source>
        <translation>潮记小组件</translation>
    </message>
    <message id="widgetEventDeletedText">
        <source>This event was deleted.</source>
        <translation>此事件已被删除。</translation>
    </message>
    <message id="widgetKind0">
        <source>All events (not chosen)</source>
        <translation>全部事件（未选择）</translation>
    </message>
    <message id="widgetKind1">
        <source>All events</source>
        <translation>全部事件</translation>
    </message>
    <message id="widgetKind2">
        <source>One-off dates</source>
        <translation>单次日期</translation>
    </message>
    <message id="widgetKind3">
        <source>Repeating events</source>
        <translation>重复事件</translation>
    </message>
    <message id="widgetKind4">
        <source>Starred events</source>
        <translation>星标事件</translation>
    </message>
    <message id="widgetNoDataText">
        <source>Open Tide Mark once to show your events here.</source>
        <translation>请先打开一次潮记，事件才会显示在这里。</translation>
    </message>
    <message id="widgetNoEventsOfKindText">
        <source>No events of this kind.</source>
        <translation>没有这一类的事件。</translation>
    </message>
    <message id="widgetSize_large">
        <source>Large</source>
        <translation>大</translation>
    </message>
    <message id="widgetSize_lock">
        <source>Lock screen</source>
        <translation>锁屏</translation>
    </message>
    <message id="widgetSize_medium">
        <source>Medium</source>
        <translation>中</translation>
    </message>
    <message id="widgetSize_small">
        <source>Small</source>
        <translation>小</translation>
    </message>
</context>
</TS>
