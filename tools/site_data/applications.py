"""The sample site's applications: control panels, macros and key files."""

from dataclasses import dataclass, field


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
    from . import macros

    return [Application("Evening News", [ControlPanel("CP1", "Studio 1 Main Desk", {1: macros.news_main()})])]
