"""Receives the accessibility events that programs send to a screen reader."""

import collections

from tablet import Atspi, GLib

# `event` is "showing" or "focused". Role and name are None if the program has ended since.
Event = collections.namedtuple("Event", "program event source role name")


class EventListener:
    EVENTS = ("object:state-changed:showing", "object:state-changed:focused")

    def __init__(self):
        self._events = collections.deque()
        self._listener = Atspi.EventListener.new(self._on_event)
        for event in self.EVENTS:
            self._listener.register(event)

    def _on_event(self, event):
        if event.detail1 != 1:
            return
        source = event.source
        try:
            role, name = source.get_role_name(), source.get_name()
        except GLib.Error:
            role, name = None, None
        self._events.append(Event(source.app.bus_name, event.type.rsplit(":", 1)[1], source,
                                 role, name))

    def next_of(self, program):
        """Returns the next event from the program with this bus name, or None if there is none.
        Discards earlier events from other programs."""
        context = GLib.MainContext.default()
        while context.iteration(False):
            pass
        while self._events:
            event = self._events.popleft()
            if event.program == program:
                return event
        return None

    def close(self):
        for event in self.EVENTS:
            self._listener.deregister(event)
