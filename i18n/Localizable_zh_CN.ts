<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>Localizable</name>
    <message id="appDisplayName">
        <source>Tide Mark</source>
        <translation>潮记</translation>
    </message>
    <message id="eventInfoAtOnboardPageContentString">
        <source>A sample event: Tide Mark counts the days until the new year begins.</source>
        <translation>示例事件：潮记会为你倒数新年到来的天数。</translation>
    </message>
    <message id="eventInfoAtOnboardPageTitleString">
        <source>New Year's Day</source>
        <translation>元旦</translation>
    </message>
    <message id="eventsTodayCountString">
        <source>%1 events on this day</source>
        <translation>这一天有 %1 个事件</translation>
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
    <message id="noEventForTodayString">
        <source>No events on this day</source>
        <translation>这一天没有事件</translation>
    </message>
    <message id="noEventStoredString">
        <source>No events yet</source>
        <translation>还没有事件</translation>
    </message>
    <message id="onboardPageString01">
        <source>Welcome to Tide Mark</source>
        <translation>欢迎使用潮记</translation>
    </message>
    <message id="onboardPageString02">
        <source>Keep your dates, anniversaries and repeating events here, and see at a glance how many days remain.</source>
        <translation>在这里记下日期、纪念日和重复事件，一眼看到还剩多少天。</translation>
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
    <message id="todayStringAtComputeFuncPageForNextEventDate">
        <source>Today</source>
        <translation>今天</translation>
    </message>
    <message id="tomorrowStringAtComputeFuncPageForNextEventDate">
        <source>Tomorrow</source>
        <translation>明天</translation>
    </message>
</context>
</TS>
