"""Hears what programs tell a screen reader."""

import collections

from tablet import Atspi, GLib

# Something with that role and name came into sight, or has the keyboard. Role and name are None if
# its program could not be asked any more.
Heard = collections.namedtuple("Heard", "program event source role name")


class Ear:
    EVENTS = ("object:state-changed:showing", "object:state-changed:focused")

    def __init__(self):
        self._heard = collections.deque()
        self._listener = Atspi.EventListener.new(self._hear)
        for event in self.EVENTS:
            self._listener.register(event)

    def _hear(self, event):
        if event.detail1 != 1:
            return
        source = event.source
        try:
            role, name = source.get_role_name(), source.get_name()
        except GLib.Error:
            role, name = None, None
        self._heard.append(Heard(source.app.bus_name, event.type.rsplit(":", 1)[1], source,
                                 role, name))

    def next_of(self, program):
        """What was heard next of the program with that name on the bus; None if there is nothing.
        What others said before is forgotten."""
        context = GLib.MainContext.default()
        while context.iteration(False):
            pass
        while self._heard:
            heard = self._heard.popleft()
            if heard.program == program:
                return heard
        return None

    def close(self):
        for event in self.EVENTS:
            self._listener.deregister(event)
