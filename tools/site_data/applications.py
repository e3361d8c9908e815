"""The sample site's applications: control panels, macros and key files."""

from dataclasses import dataclass, field

from . import keys, macros


@dataclass
class ControlPanel:
    """Current-family panels have workplaces with macros, older ones key files, absent ones neither."""

    name: str
    label: str
    workplaces: dict = field(default_factory=dict)  # number -> {macro number: Macro}
    keys: dict = field(default_factory=dict)  # key index -> [command text]
    absent: bool = False


@dataclass
class Application:
    name: str
    panels: list

    def devices(self):
        """The name must not hold the letters that begin a panel's name, nor may the labels."""
        lines = ["[Application]", f"Name={self.name}", "", "[Devices]"]
        lines += [f'Dev{i}={panel.name} "{panel.label}" 10.1.12.{40 + i}' for i, panel in enumerate(self.panels, 1)]
        return "\r\n".join(lines) + "\r\n"


def contents(panel):
    lines = ["#CNT", "Version=2", f"Panel={panel.name}"]
    for number, macros in panel.workplaces.items():
        lines.append(f"Workplace{number}={len(macros)} macros")
    return "\n".join(lines) + "\n"


def key_file(index, texts):
    head = f"#UPK\nBeginHeader\nFile=key{index:02d}.upk\nName=MK{index + 1:02d}\nVersion=1.0\nEndHeader\n"
    return head + "".join(text + "\n" for text in texts)


def applications():
    return [
        Application("Evening News", [
            ControlPanel("CP1", "Studio 1 Main Desk", {1: macros.news_main(), 2: macros.news_second()}),
            ControlPanel("CP2", "Studio 1 Assistant", {1: macros.news_assistant(), 2: macros.news_training()}),
            ControlPanel("CP7", "Graphics Side Panel", keys=keys.graphics_panel())]),
        Application("Football Live", [
            ControlPanel("CP1", "OB Truck Main Desk", {1: macros.football_main(), 2: macros.football_second()}),
            ControlPanel("CP3", "Replay Side Panel", keys=keys.replay_panel()),
            ControlPanel("CP4", "Spare Desk, not fitted", absent=True)]),
        Application("Studio Talk", [
            ControlPanel("CP2", "Side Panel Left", keys=keys.talk_panel()),
            ControlPanel("CP5", "Talk Desk", {1: macros.talk_main(), 2: macros.talk_second()})]),
    ]
