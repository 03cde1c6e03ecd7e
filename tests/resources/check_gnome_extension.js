// The extension for GNOME Shell, run with a double of what the shell gives to extensions. Usage:
// check_gnome_extension.js FOLDER
"use strict";

const assert = require("node:assert");
const fs = require("node:fs");
const path = require("node:path");
const vm = require("node:vm");

const folder = process.argv[2];
const script = fs.readFileSync(path.join(folder, "extension.js"), "utf8");

class Emitter {
    handlers = new Map();
    last = 0;
    connect(signal, handler) {
        this.handlers.set(++this.last, {signal, handler});
        return this.last;
    }
    disconnect(id) {
        assert.ok(this.handlers.delete(id));
    }
    emit(signal) {
        for (const each of [...this.handlers.values()].filter((one) => one.signal === signal)) {
            each.handler();
        }
    }
}

const desktopType = 1;

class MetaWindow {
    constructor(values) {
        Object.assign(this, {gtkId: null, wmClass: null, title: null, pid: -1, type: 0, application: null}, values);
    }
    get_window_type = () => this.type;
    get_gtk_application_id = () => this.gtkId;
    get_wm_class = () => this.wmClass;
    get_title = () => this.title;
    get_pid = () => this.pid;
}

function application(id, name, isWindowBacked = false) {
    return {get_id: () => id, get_name: () => name, is_window_backed: () => isWindowBacked};
}

class GnomeShell {
    display = Object.assign(new Emitter(), {focus_window: null});
    tracker = Object.assign(new Emitter(), {get_window_app: (window) => window.application});
    calls = [];
    timers = new Map();
    watches = new Map();
    last = 0;

    constructor() {
        const shell = this;
        const imports = {gi: {
            Gio: {
                BusType: {SESSION: "session"},
                BusNameWatcherFlags: {NONE: "no activation"},
                DBusCallFlags: {NO_AUTO_START: "no start"},
                bus_watch_name(bus, name, flags, appeared, vanished) {
                    assert.deepStrictEqual([bus, name, flags], ["session", "org.vorn.Focus", "no activation"]);
                    shell.watches.set(++shell.last, {appeared, vanished});
                    return shell.last;
                },
                bus_unwatch_name: (id) => assert.ok(shell.watches.delete(id)),
            },
            GLib: {
                PRIORITY_DEFAULT: 0,
                SOURCE_REMOVE: false,
                Variant: class {
                    constructor(signature, values) {
                        Object.assign(this, {signature, values});
                    }
                },
                timeout_add(priority, interval, handler) {
                    assert.ok(interval > 0 && interval <= 20);
                    shell.timers.set(++shell.last, handler);
                    return shell.last;
                },
                source_remove: (id) => assert.ok(shell.timers.delete(id)),
            },
            Meta: {WindowType: {DESKTOP: desktopType}},
            Shell: {WindowTracker: {get_default: () => this.tracker}},
        }};
        const context = vm.createContext({imports, global: {display: this.display}});
        vm.runInContext(script, context);
        this.extension = context.init();
    }

    connection = {
        call: (name, object, face, method, parameters, replyType, flags, timeout, cancellable, done) => {
            assert.deepStrictEqual([name, object, face, method, parameters.signature, replyType, flags, cancellable],
                ["org.vorn.Focus", "/org/vorn/Focus", "org.vorn.Focus1", "SetApplicationInFront", "(sss)", null, "no start",
                    null]);
            this.calls.push([...parameters.values]);
            done({call_finish() {
                throw new Error("the engine is gone");
            }}, null);
        },
    };

    startEngine() {
        this.watches.forEach((watch) => watch.appeared(this.connection, "org.vorn.Focus", ":1.5"));
    }
    endEngine() {
        this.watches.forEach((watch) => watch.vanished(this.connection, "org.vorn.Focus"));
    }
    focus(window) {
        this.display.focus_window = window;
        this.display.emit("notify::focus-window");
        this.tracker.emit("notify::focus-app");
    }
    passTime() {
        for (const [id, handler] of [...this.timers]) {
            assert.strictEqual(handler(), false);
            this.timers.delete(id);
        }
        return this.calls.splice(0);
    }
    countAll() {
        return [this.display.handlers.size, this.tracker.handlers.size, this.timers.size, this.watches.size];
    }
}

const metadata = JSON.parse(fs.readFileSync(path.join(folder, "metadata.json"), "utf8"));
assert.strictEqual(metadata.uuid, path.basename(folder), "the shell wants the folder to be called like the extension");
assert.ok(metadata.name && metadata.description && metadata["shell-version"].length > 0);

const editor = new MetaWindow({application: application("org.example.Editor.desktop", "Editor"), pid: 12, title: "A text"});
const game = new MetaWindow({application: application("window:7", "Game", true), wmClass: "game.exe", title: "The game"});
const gtk = new MetaWindow({gtkId: "org.example.Gtk", wmClass: "gtk", title: "Gtk", pid: 3});
const desktop = new MetaWindow({application: application("ding.desktop", "Icons"), type: desktopType, pid: 4});

const shell = new GnomeShell();
assert.deepStrictEqual(shell.countAll(), [0, 0, 0, 0], "nothing before it is enabled");
shell.extension.enable();
shell.focus(editor);
assert.deepStrictEqual(shell.passTime(), [], "nothing while no engine runs");
shell.startEngine();
assert.deepStrictEqual(shell.passTime(), [["org.example.Editor.desktop", "12", "Editor"]], "what is in front already");

shell.focus(game);
assert.deepStrictEqual(shell.calls, [], "nothing at once");
assert.deepStrictEqual(shell.passTime(), [["game.exe", "", "The game"]], "a window without a desktop file");
shell.focus(gtk);
assert.deepStrictEqual(shell.passTime(), [["org.example.Gtk", "3", "Gtk"]], "a window that names its application");
shell.focus(null);
assert.deepStrictEqual(shell.passTime(), [["", "", ""]], "the bare desktop");
shell.focus(desktop);
assert.deepStrictEqual(shell.passTime(), [], "the same with icons");
shell.focus(new MetaWindow({}));
assert.deepStrictEqual(shell.passTime(), [], "a window that says nothing");

for (let change = 0; change < 1000; ++change) {
    shell.focus(change % 2 ? editor : game);
}
assert.strictEqual(shell.timers.size, 1, "changes do not put off what is told");
assert.deepStrictEqual(shell.passTime(), [["org.example.Editor.desktop", "12", "Editor"]], "a thousand changes");

shell.focus(game);
shell.endEngine();
assert.deepStrictEqual(shell.passTime(), [], "nothing after the engine");
shell.startEngine();
assert.deepStrictEqual(shell.passTime(), [["game.exe", "", "The game"]], "the next engine hears it anew");

shell.focus(editor);
shell.extension.disable();
assert.deepStrictEqual(shell.passTime(), [["", "", ""]], "nothing is in front for who hears no more of it");
assert.deepStrictEqual(shell.countAll(), [0, 0, 0, 0], "it leaves nothing behind");
shell.extension.enable();
shell.startEngine();
assert.deepStrictEqual(shell.passTime(), [["org.example.Editor.desktop", "12", "Editor"]], "enabled again, it tells anew");
shell.focus(null);
assert.deepStrictEqual(shell.passTime(), [["", "", ""]]);
shell.extension.disable();
assert.deepStrictEqual(shell.passTime(), [], "the engine knows that nothing is in front");
shell.extension.enable();
shell.extension.disable();
assert.deepStrictEqual(shell.passTime(), [], "nothing without an engine");
assert.deepStrictEqual(shell.countAll(), [0, 0, 0, 0], "also the second time");
