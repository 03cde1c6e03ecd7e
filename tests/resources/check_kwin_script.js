// The script for KWin, run with a double of what KWin gives to scripts. Usage: check_kwin_script.js SCRIPT
"use strict";

const assert = require("node:assert");
const fs = require("node:fs");
const vm = require("node:vm");

const script = fs.readFileSync(process.argv[2], "utf8");

class Signal {
    handlers = [];
    connect(handler) {
        this.handlers.push(handler);
    }
    emit(...values) {
        this.handlers.forEach((handler) => handler(...values));
    }
}

class KWin {
    calls = [];
    timers = [];

    constructor(names, front) {
        const kwin = this;
        this.names = names;
        this.workspace = {[names.front]: front, [names.activated]: new Signal()};
        class QTimer {
            active = false;
            starts = 0;
            timeout = new Signal();
            constructor() {
                kwin.timers.push(this);
            }
            start() {
                this.active = true;
                ++this.starts;
            }
        }
        vm.runInNewContext(script, {workspace: this.workspace, QTimer, callDBus: (...call) => this.calls.push(call)});
    }

    activate(front) {
        this.workspace[this.names.front] = front;
        this.workspace[this.names.activated].emit(front);
    }
    passTime() {
        for (const timer of this.timers.filter((each) => each.active)) {
            assert.ok(timer.singleShot && timer.interval > 0 && timer.interval <= 20);
            timer.active = false;
            timer.timeout.emit();
        }
    }
    takeCalls() {
        return this.calls.splice(0);
    }
}

function call(identifier, executable, name) {
    return ["org.vorn.Focus", "/org/vorn/Focus", "org.vorn.Focus1", "SetApplicationInFront", identifier, executable, name];
}

const editor = {desktopFileName: "org.example.Editor", resourceClass: "editor", pid: 12, caption: "A text"};
const game = {desktopFileName: "", resourceClass: "game.exe", pid: 0, caption: "The game"};
const desktop = {desktopFileName: "org.kde.plasmashell", resourceClass: "plasmashell", pid: 9, caption: "Desktop",
    desktopWindow: true};

for (const names of [{front: "activeClient", activated: "clientActivated"},
    {front: "activeWindow", activated: "windowActivated"}]) {
    const kwin = new KWin(names, editor);
    assert.deepStrictEqual(kwin.takeCalls(), [call("org.example.Editor", "12", "A text")], "what is in front at the start");

    kwin.activate(game);
    assert.deepStrictEqual(kwin.takeCalls(), [], "nothing at once");
    kwin.passTime();
    assert.deepStrictEqual(kwin.takeCalls(), [call("game.exe", "", "The game")], "a window without a desktop file");

    kwin.activate(null);
    kwin.passTime();
    kwin.activate(desktop);
    kwin.passTime();
    assert.deepStrictEqual(kwin.takeCalls(), [call("", "", ""), call("", "", "")], "the bare desktop");

    kwin.activate({});
    kwin.passTime();
    assert.deepStrictEqual(kwin.takeCalls(), [call("", "", "")], "a window that says nothing");

    const starts = kwin.timers[0].starts;
    for (let change = 0; change < 1000; ++change) {
        kwin.activate(change % 2 ? editor : game);
    }
    kwin.passTime();
    kwin.passTime();
    assert.deepStrictEqual(kwin.takeCalls(), [call("org.example.Editor", "12", "A text")], "a thousand changes");
    assert.strictEqual(kwin.timers[0].starts, starts + 1, "which do not put off what is told");
}
assert.deepStrictEqual(new KWin({front: "activeWindow", activated: "windowActivated"}, null).takeCalls(), [call("", "", "")]);
