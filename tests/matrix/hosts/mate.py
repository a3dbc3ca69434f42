from hosts.tray import Tray
from tray_checks import LEFT

INDICATOR_SERVICE = \
    "/usr/libexec/ayatana-indicator-application/ayatana-indicator-application-service"


class MatePanel(Tray):
    variables = {"XDG_CURRENT_DESKTOP": "MATE"}
    window_manager = ("marco", "--composite")
    panel = ("mate-panel",)
    applet = None  # by its factory

    def prepare(self, world):
        world.set_setting("org.mate.panel", "toplevel-id-list", "['top']")
        world.set_setting("org.mate.panel", "object-id-list", "['tray']")
        top = "org.mate.panel.toplevel:/org/mate/panel/toplevels/top/"
        for key, value in (("expand", "true"), ("orientation", "top"), ("size", "28")):
            world.set_setting(top, key, value)
        tray = "org.mate.panel.object:/org/mate/panel/objects/tray/"
        for key, value in (("object-type", "applet"), ("applet-iid", self.applet),
                           ("toplevel-id", "top"), ("position", "10"), ("locked", "true")):
            world.set_setting(tray, key, value)


class MateNotificationArea(MatePanel):
    name, package = "mate-panel", "mate-panel"
    applet = "NotificationAreaAppletFactory::NotificationArea"


class MateIndicators(MatePanel):
    """The indicator applet. Its tray is a service of its own, which the panel outlives."""

    name, package = "mate-indicators", "mate-indicator-applet"
    applet = "IndicatorAppletCompleteFactory::IndicatorAppletComplete"
    menu_buttons = (LEFT,)
    other_button = "opens the menu of the panel"
    panel_process = None

    def start_tray(self, world):
        self.process = world.start(INDICATOR_SERVICE)
        if not self.panel_process:
            self.panel_process = world.start(*self.panel)
