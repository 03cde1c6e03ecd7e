// Tells Skarn's core engine which application is in front, while an engine runs on the session bus. What changes
// within a hundredth of a second is told once, as it is at its end.
'use strict';

const {Gio, GLib, Meta, Shell} = imports.gi;

const BUS_NAME = 'org.vorn.Focus';
const OBJECT_PATH = '/org/vorn/Focus';
const INTERFACE = 'org.vorn.Focus1';
const FOLDING_TIME = 10; // milliseconds
const NOTHING = ['', '', '']; // the bare desktop

class Teller {
    constructor() {
        this._connection = null; // while the engine is there
        this._told = null;
        this._timer = 0;
        this._tracker = Shell.WindowTracker.get_default();
        // The second comes later where the application of a window is not known at once.
        this._windowSignal = global.display.connect('notify::focus-window', () => this._tellSoon());
        this._applicationSignal = this._tracker.connect('notify::focus-app', () => this._tellSoon());
        this._watch = Gio.bus_watch_name(Gio.BusType.SESSION, BUS_NAME, Gio.BusNameWatcherFlags.NONE,
            connection => this._begin(connection), () => this._end());
    }

    destroy() {
        Gio.bus_unwatch_name(this._watch);
        global.display.disconnect(this._windowSignal);
        this._tracker.disconnect(this._applicationSignal);
        // The shell turns extensions off while the screen is locked, too; its connection stays.
        if (this._connection)
            this._tellOf(NOTHING);
        this._end();
    }

    _begin(connection) {
        this._connection = connection;
        this._tell();
    }

    _end() {
        if (this._timer)
            GLib.source_remove(this._timer);
        this._timer = 0;
        this._connection = null;
        this._told = null;
    }

    _tellSoon() {
        if (!this._connection || this._timer)
            return;
        this._timer = GLib.timeout_add(GLib.PRIORITY_DEFAULT, FOLDING_TIME, () => {
            this._timer = 0;
            this._tell();
            return GLib.SOURCE_REMOVE;
        });
    }

    _tell() {
        this._tellOf(this._applicationInFront());
    }

    _tellOf(front) {
        if (this._told && front.every((text, index) => text === this._told[index]))
            return;
        this._told = front;
        this._connection.call(BUS_NAME, OBJECT_PATH, INTERFACE, 'SetApplicationInFront',
            new GLib.Variant('(sss)', front), null, Gio.DBusCallFlags.NO_AUTO_START, -1, null, (connection, result) => {
                try {
                    connection.call_finish(result);
                } catch {
                    // The engine is going, or does not want to know.
                }
            });
    }

    // Identifier, the process for its program, and name.
    _applicationInFront() {
        const window = global.display.focus_window;
        if (!window || window.get_window_type() === Meta.WindowType.DESKTOP)
            return NOTHING;
        const application = this._tracker.get_window_app(window);
        // What has no desktop file has an ID that is only a number.
        const hasFile = application && !application.is_window_backed();
        const identifier = hasFile ? application.get_id() : window.get_gtk_application_id() || window.get_wm_class();
        const process = window.get_pid();
        const name = hasFile ? application.get_name() : window.get_title();
        return [identifier || '', process > 0 ? String(process) : '', name || ''];
    }
}

class Extension {
    enable() {
        this._teller = new Teller();
    }

    disable() {
        this._teller.destroy();
        this._teller = null;
    }
}

// eslint-disable-next-line no-unused-vars
function init() {
    return new Extension();
}
