"""The task of replacing the catalogue."""

from screen_work import ScreenWork


class ReloadWork(ScreenWork):
    name = "catalogue reload"

    def service(self):
        """Returns a service whose catalogue differs from the stored one."""
        return next(service for service in self.workplace.services
                    if service.catalogue != self.expected.catalogue)

    def prepare(self, tablet):
        self._catalogue = self.service().catalogue
        tablet.enter_picking()
        tablet.remember("push button", "Reload Items")

    def run(self, tablet):
        self.expected.begin_catalogue(self._catalogue)
        tablet.touch("push button", "Reload Items")
        tablet.expect_showing("dialog", "Saved")
        self.expected.confirm()
