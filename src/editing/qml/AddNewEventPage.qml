import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Editing
import TideMark.Components

// The new-event form, in add mode or (editOrAddNewEventCheckValue) in full edit mode of the event
// eventId. Everything it decides lives in AddNewEventForm; this draws the sections and passes
// taps on. The repeat and reminder rows open their own pages, which work on the same settings.
Page {
    id: page
    objectName: "addNewEventPage"

    property bool editOrAddNewEventCheckValue: false
    property string eventId: ""
    property bool resetAllDataWhenEnterFromCardView: false

    readonly property bool darkScheme: Material.theme === Material.Dark
    readonly property color groupColor: Theme.colors(darkScheme).cardBackground
    readonly property color pageColor: Theme.colors(darkScheme).pageBackground
    readonly property color accent: Theme.named("selectedDateBackground", darkScheme)
    readonly property bool fieldHasFocus: titleField.activeFocus || contentField.activeFocus

    property alias form: form

    AddNewEventForm {
        id: form
        editOrAddNewEventCheckValue: page.editOrAddNewEventCheckValue
        eventId: page.eventId
        resetAllDataWhenEnterFromCardView: page.resetAllDataWhenEnterFromCardView
        haptics: Haptics
        onDismissRequested: page.leave()
        onAlertForRequiredMoreInfoChanged: {
            if (alertForRequiredMoreInfo)
                alert.open()
            else
                alert.close()
        }
    }

    function leave() {
        if (page.StackView.view)
            page.StackView.view.pop()
    }

    function clearFocus() {
        titleField.focus = false
        contentField.focus = false
        page.forceActiveFocus()
    }

    // Pushes a page of the window's module.
    function open(rulePage, properties) {
        if (!page.StackView.view)
            return
        clearFocus()
        page.StackView.view.push(rulePage, properties || {})
    }

    // Each appearance: the first one and every return from a sub-page.
    property bool appearedOnce: false
    function appear() {
        form.appeared()
        titleField.text = form.titleForEventInfo
        contentField.text = form.contentForEventInfo
        // Long texts show their beginning, not the end where setting the text left the cursor.
        titleField.cursorPosition = 0
        contentField.cursorPosition = 0
        appearedOnce = true
    }
    StackView.onActivating: appear()
    Component.onCompleted: if (!page.StackView.view) appear()

    background: Rectangle { color: page.pageColor }

    header: ToolBar {
        objectName: "formToolBar"
        Material.background: page.pageColor
        Material.foreground: page.Material.foreground
        Material.elevation: 0
        height: 52

        RowLayout {
            anchors.fill: parent
            anchors.leftMargin: Theme.spacingSmall
            anchors.rightMargin: Theme.spacingSmall
            spacing: 0

            ToolButton {
                objectName: "formBackButton"
                text: Symbols.glyph("chevron.left")
                font.family: Symbols.fontFamily
                font.pixelSize: 30
                Material.foreground: page.accent
                Accessible.name: "back"
                onClicked: page.leave()
            }
            Label {
                objectName: "formTitle"
                Layout.fillWidth: true
                text: qsTrId("addNewEventPageNavigationTitleStringAtaddNewEventPage")
                font.pixelSize: Theme.fontEmphasis
                font.bold: true
                elide: Text.ElideRight
            }
            ToolButton {
                objectName: "keyboardDismissButton"
                visible: page.fieldHasFocus
                text: Symbols.glyph("keyboard.chevron.compact.down")
                font.family: Symbols.fontFamily
                font.pixelSize: 26
                Material.foreground: page.accent
                onClicked: page.clearFocus()
            }
            ToolButton {
                objectName: "trashButton"
                visible: page.editOrAddNewEventCheckValue
                text: Symbols.glyph("trash")
                font.family: Symbols.fontFamily
                font.pixelSize: 26
                Material.foreground: Theme.named("colorForUserSelection01", page.darkScheme)
                onClicked: form.deleteAction()
            }
            ToolButton {
                id: confirmButton
                objectName: "confirmButton"
                readonly property bool blocked: form.confirmAction === AddNewEventForm.Alert
                onClicked: {
                    page.clearFocus()
                    form.confirm()
                }
                contentItem: Item {
                    implicitWidth: 32
                    implicitHeight: 32
                    // A form that can't be saved shows the keyboard badge under the checkmark.
                    Label {
                        objectName: "confirmBadge"
                        anchors.centerIn: parent
                        visible: confirmButton.blocked
                        text: Symbols.glyph("keyboard.badge.ellipsis")
                        font.family: Symbols.fontFamily
                        font.pixelSize: 30
                        opacity: 0.45
                    }
                    Label {
                        objectName: "confirmCheckmark"
                        anchors.centerIn: parent
                        anchors.verticalCenterOffset: confirmButton.blocked ? -7 : 0
                        text: Symbols.glyph("checkmark")
                        font.family: Symbols.fontFamily
                        font.pixelSize: confirmButton.blocked ? 20 : 28
                        font.bold: true
                        color: page.accent
                    }
                }
            }
        }
    }

    // ---- building blocks --------------------------------------------------------------------

    component SectionHeader: Label {
        Layout.fillWidth: true
        Layout.leftMargin: 32
        Layout.rightMargin: 32
        Layout.topMargin: 18
        Layout.bottomMargin: 6
        font.pixelSize: Theme.fontSmall
        opacity: 0.6
        elide: Text.ElideRight
    }

    component Group: Rectangle {
        default property alias rows: column.data
        Layout.fillWidth: true
        Layout.leftMargin: 16
        Layout.rightMargin: 16
        Layout.topMargin: 0
        implicitHeight: column.implicitHeight
        radius: Theme.radius
        color: page.groupColor
        ColumnLayout {
            id: column
            anchors.left: parent.left
            anchors.right: parent.right
            spacing: 0
        }
    }

    component Divider: Rectangle {
        Layout.fillWidth: true
        Layout.leftMargin: 16
        implicitHeight: 1
        color: page.Material.dividerColor
    }

    component SwitchRow: Item {
        id: switchRow
        property alias text: label.text
        property alias checked: toggle.checked
        property alias switchName: toggle.objectName
        signal toggled(bool on)
        Layout.fillWidth: true
        implicitHeight: Math.max(50, label.implicitHeight + 20)
        Label {
            id: label
            anchors.left: parent.left
            anchors.right: toggle.left
            anchors.leftMargin: Theme.spacingLarge
            anchors.verticalCenter: parent.verticalCenter
            font.pixelSize: Theme.fontBodyLarge
            wrapMode: Text.Wrap
        }
        TideSwitch {
            id: toggle
            anchors.right: parent.right
            anchors.rightMargin: Theme.spacing
            anchors.verticalCenter: parent.verticalCenter
            onToggled: switchRow.toggled(checked)
        }
    }

    component LinkRow: ItemDelegate {
        id: linkRow
        property string label
        property string explanation
        property bool active: true
        Layout.fillWidth: true
        implicitHeight: Math.max(50, linkColumn.implicitHeight + 20)
        leftPadding: 16
        rightPadding: 12
        enabled: active
        background: Rectangle {
            radius: Theme.radius
            color: linkRow.pressed ? page.Material.listHighlightColor : "transparent"
        }
        contentItem: Item {
            ColumnLayout {
                id: linkColumn
                anchors.left: parent.left
                anchors.right: chevron.left
                anchors.verticalCenter: parent.verticalCenter
                spacing: 2
                Label {
                    Layout.fillWidth: true
                    text: linkRow.label
                    font.pixelSize: Theme.fontBodyLarge
                    color: page.Material.foreground
                    opacity: linkRow.active ? 1 : 0.45
                    wrapMode: Text.Wrap
                }
                Label {
                    objectName: linkRow.objectName + "Explanation"
                    Layout.fillWidth: true
                    visible: linkRow.active && text !== ""
                    text: linkRow.explanation
                    font.pixelSize: Theme.fontSmall
                    color: page.accent
                    wrapMode: Text.Wrap
                }
            }
            Label {
                id: chevron
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                visible: linkRow.active
                text: Symbols.glyph("chevron.right")
                font.family: Symbols.fontFamily
                font.pixelSize: Theme.fontHeadline
                opacity: 0.4
            }
        }
    }

    // ---- the form ---------------------------------------------------------------------------

    Flickable {
        id: scroller
        objectName: "formScroller"
        anchors.fill: parent
        contentWidth: width
        contentHeight: sections.implicitHeight + 32
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        ScrollIndicator.vertical: ScrollIndicator {}

        ColumnLayout {
            id: sections
            width: scroller.width
            spacing: 0

            // Title and content.
            SectionHeader { text: qsTrId("addNewEventPageContentString01"); Layout.topMargin: 6 }
            Group {
                TextField {
                    id: titleField
                    objectName: "titleField"
                    Layout.fillWidth: true
                    Layout.leftMargin: 16
                    Layout.rightMargin: 16
                    placeholderText: qsTrId("addNewEventPageTitleSpaceholderString")
                    font.pixelSize: Theme.fontTitle
                    background: null
                    topPadding: 14
                    bottomPadding: 14
                    onTextEdited: form.titleForEventInfo = text
                    onAccepted: page.clearFocus()
                }
                Divider {}
                TextField {
                    id: contentField
                    objectName: "contentField"
                    Layout.fillWidth: true
                    Layout.leftMargin: 16
                    Layout.rightMargin: 16
                    placeholderText: qsTrId("addNewEventPageContentSpaceholderString")
                    font.pixelSize: Theme.fontBodyLarge
                    background: null
                    topPadding: 14
                    bottomPadding: 14
                    onTextEdited: form.contentForEventInfo = text
                    onAccepted: page.clearFocus()
                }
            }

            // Colour.
            Group {
                Layout.topMargin: 16
                RowLayout {
                    Layout.fillWidth: true
                    Layout.margins: 10
                    spacing: 0
                    Repeater {
                        model: ["", "colorForUserSelection01", "colorForUserSelection02",
                                "colorForUserSelection03", "colorForUserSelection04",
                                "colorForUserSelection05"]
                        AbstractButton {
                            id: swatch
                            required property string modelData
                            readonly property bool chosen: form.eventColorString === modelData
                            readonly property color fill: Theme.named(modelData === "" ? "default" : modelData,
                                                                            page.darkScheme)
                            objectName: "colorButton_" + (modelData === "" ? "none" : modelData)
                            Layout.fillWidth: true
                            implicitHeight: 44
                            focusPolicy: Qt.NoFocus
                            Accessible.name: modelData === "" ? "no colour" : modelData
                            onClicked: form.eventColorString = modelData
                            contentItem: Item {
                                Rectangle {
                                    // The ring of the current choice.
                                    anchors.centerIn: parent
                                    width: 40
                                    height: 40
                                    radius: 20
                                    color: "transparent"
                                    border.width: 2
                                    border.color: swatch.fill
                                    visible: swatch.chosen
                                }
                                Rectangle {
                                    anchors.centerIn: parent
                                    width: 30
                                    height: 30
                                    radius: 15
                                    color: swatch.modelData === "" ? "transparent" : swatch.fill
                                    border.width: swatch.modelData === "" ? 2 : 0
                                    border.color: swatch.fill
                                    scale: swatch.pressed ? 0.9 : 1
                                    // "No colour": a struck-through ring.
                                    Rectangle {
                                        anchors.centerIn: parent
                                        visible: swatch.modelData === ""
                                        width: 2
                                        height: 26
                                        rotation: 45
                                        color: swatch.fill
                                    }
                                    Label {
                                        anchors.centerIn: parent
                                        visible: swatch.chosen && swatch.modelData !== ""
                                        text: Symbols.glyph("checkmark")
                                        font.family: Symbols.fontFamily
                                        font.pixelSize: Theme.fontEmphasis
                                        color: "white"
                                    }
                                }
                            }
                        }
                    }
                }
            }

            // Start date.
            SectionHeader { text: qsTrId("addNewEventPageContentString01-1") }
            Group {
                FormDatePicker {
                    objectName: "startDatePicker"
                    Layout.fillWidth: true
                    Layout.margins: 6
                    year: form.startPickerYear
                    month: form.startPickerMonth
                    day: form.startPickerDay
                    onPicked: (y, m, d) => form.pickStartDate(y, m, d)
                }
            }

            // Repeat.
            SectionHeader { text: qsTrId("addNewEventPageContentString02") }
            Group {
                SwitchRow {
                    switchName: "repeatSwitch"
                    text: qsTrId("addNewEventPagePickerForRepeatOrNotTrue")
                    checked: form.eventRepeatOrNot
                    onToggled: on => form.eventRepeatOrNot = on
                }
                Divider {}
                LinkRow {
                    objectName: "repeatRow"
                    active: form.eventRepeatOrNot
                    label: qsTrId("addNewEventPageGoRepeatEventSettingPageString")
                    explanation: form.repeatExplanation
                    onClicked: page.open(repeatEventSettingPage)
                }
            }

            // End date, for a repeating event.
            Group {
                visible: form.eventRepeatOrNot
                Layout.topMargin: 16
                SwitchRow {
                    switchName: "endDateSwitch"
                    text: qsTrId("addNewEventPagePickerForHaveOneEndDateForRepeatEventTrue")
                    checked: form.haveOneEndDateForRepeatEvent
                    onToggled: on => form.haveOneEndDateForRepeatEvent = on
                }
                Divider { visible: form.haveOneEndDateForRepeatEvent }
                RowLayout {
                    visible: form.haveOneEndDateForRepeatEvent
                    Layout.fillWidth: true
                    Layout.leftMargin: 16
                    Layout.rightMargin: 16
                    Layout.topMargin: 12
                    Label {
                        Layout.fillWidth: true
                        text: qsTrId("addNewEventPageContentString02-endDateString")
                        font.pixelSize: Theme.fontBodyLarge
                        elide: Text.ElideRight
                    }
                    Label {
                        objectName: "endDateText"
                        text: form.endDateText
                        font.pixelSize: Theme.fontBodyLarge
                        font.bold: true
                        color: page.accent
                    }
                }
                FormDatePicker {
                    objectName: "endDatePicker"
                    visible: form.haveOneEndDateForRepeatEvent
                    Layout.fillWidth: true
                    Layout.margins: 6
                    year: form.endPickerYear
                    month: form.endPickerMonth
                    day: form.endPickerDay
                    minimumYear: form.startPickerYear
                    minimumMonth: form.startPickerMonth
                    minimumDay: form.startPickerDay
                    maximumYear: 3000
                    maximumMonth: 12
                    maximumDay: 31
                    onPicked: (y, m, d) => form.pickEndDate(y, m, d)
                }
            }

            // Reminder.
            SectionHeader { text: qsTrId("addNewEventPageContentString03") }
            Group {
                SwitchRow {
                    switchName: "notiSwitch"
                    text: qsTrId("addNewEventPagePickerForSetNotiForThisNotReapeatEventTrue")
                    checked: form.setNotiForThisEvent
                    onToggled: on => form.setNotiForThisEvent = on
                }
                Divider {}
                LinkRow {
                    objectName: "notiRow"
                    active: form.setNotiForThisEvent
                    label: qsTrId("addNewEventPageGoNotiSettingPageString")
                    explanation: form.notiExplanation
                    onClicked: page.open(notiSettingPage)
                }
            }

            // Star and memo.
            SectionHeader { text: qsTrId("addNewEventPageContentString11") }
            Group {
                SwitchRow {
                    switchName: "starSwitch"
                    text: qsTrId("addNewEventPagePickerForAddStarTrue")
                    checked: form.addStarToThisEvent
                    onToggled: on => form.addStarToThisEvent = on
                }
                Divider {}
                SwitchRow {
                    switchName: "memoSwitch"
                    text: qsTrId("addNewEventPagePickerForAddMemoToThisEventTrue")
                    checked: form.addMemoToThisEvent
                    onToggled: on => form.addMemoToThisEvent = on
                }
            }
        }
    }

    AlertDialog {
        id: alert
        objectName: "needMoreInfoAlert"
        darkScheme: page.darkScheme
        accent: page.accent
        titleText: qsTrId("alertTitleStringForNeedMoreInfoAtAddNewEventPage")
        message: qsTrId(form.alertMessageKey)
        buttonText: qsTrId("alertButtonStringForNeedMoreInfoAtAddNewEventPage")
        titleName: "needMoreInfoTitle"
        messageName: "needMoreInfoMessage"
        buttonName: "needMoreInfoButton"
        onClosed: form.alertForRequiredMoreInfo = false
    }

    // The pages and popups this one opens.
    Component { id: repeatEventSettingPage; RepeatEventSettingPage {} }
    Component { id: notiSettingPage; NotiSettingPage {} }
}
