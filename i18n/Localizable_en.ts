<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>Localizable</name>
    <message id="appDisplayName">
        <source>Tide Mark</source>
        <translation>Tide Mark</translation>
    </message>
    <message id="eventInfoAtOnboardPageContentString">
        <source>A sample event: Tide Mark counts the days until the new year begins.</source>
        <translation>A sample event: Tide Mark counts the days until the new year begins.</translation>
    </message>
    <message id="eventInfoAtOnboardPageTitleString">
        <source>New Year's Day</source>
        <translation>New Year's Day</translation>
    </message>
    <message id="eventsTodayCountString">
        <source>%1 events on this day</source>
        <translation>%1 events on this day</translation>
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
    <message id="noEventForTodayString">
        <source>No events on this day</source>
        <translation>No events on this day</translation>
    </message>
    <message id="noEventStoredString">
        <source>No events yet</source>
        <translation>No events yet</translation>
    </message>
    <message id="onboardPageString01">
        <source>Welcome to Tide Mark</source>
        <translation>Welcome to Tide Mark</translation>
    </message>
    <message id="onboardPageString02">
        <source>Keep your dates, anniversaries and repeating events here, and see at a glance how many days remain.</source>
        <translation>Keep your dates, anniversaries and repeating events here, and see at a glance how many days remain.</translation>
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
    <message id="todayStringAtComputeFuncPageForNextEventDate">
        <source>Today</source>
        <translation>Today</translation>
    </message>
    <message id="tomorrowStringAtComputeFuncPageForNextEventDate">
        <source>Tomorrow</source>
        <translation>Tomorrow</translation>
    </message>
</context>
</TS>
