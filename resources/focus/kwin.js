// A script for KWin 5 and 6, which the core engine loads while a profile asks for an application: it tells the engine
// which one is in front. What changes within a hundredth of a second is told once, as it is at its end.
"use strict";

const telling = new QTimer();
telling.singleShot = true;
telling.interval = 10;

function windowInFront() {
    return workspace.activeWindow === undefined ? workspace.activeClient : workspace.activeWindow;
}

function text(value) {
    return value === undefined || value === null ? "" : String(value);
}

function tell() {
    const front = windowInFront();
    const isBare = !front || front.desktopWindow;
    // The process for its program: the engine looks it up.
    const told = isBare ? ["", "", ""]
        : [text(front.desktopFileName) || text(front.resourceClass), front.pid > 0 ? String(front.pid) : "",
            text(front.caption)];
    callDBus("org.vorn.Focus", "/org/vorn/Focus", "org.vorn.Focus1", "SetApplicationInFront", told[0], told[1], told[2]);
}

function tellSoon() {
    if (!telling.active) {
        telling.start();
    }
}

telling.timeout.connect(tell);
// As KWin 6 calls it, or KWin 5.
(workspace.windowActivated || workspace.clientActivated).connect(tellSoon);
tell();
