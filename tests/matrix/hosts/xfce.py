from hosts.tray import Tray

# A panel across the top of the screen with nothing in it but the tray.
SETTINGS = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="28"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="systray"/>
  </property>
</channel>
"""


class Xfce(Tray):
    name, package = "xfce4-panel", "xfce4-panel"
    variables = {"XDG_CURRENT_DESKTOP": "XFCE"}
    panel = ("xfce4-panel", "--disable-wm-check")

    def prepare(self, world):
        world.write(world.config("xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml"), SETTINGS)
