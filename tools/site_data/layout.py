"""All files of the sample site: host path below the site root -> bytes."""

import struct

from .applications import contents, key_file
from .decoding_lists import decoding_lists
from .dictionary import interface_files

BIN = "c/programme/RV48/bin/"
FID = BIN + "MacroFid/"
APPLICATIONS = "c/programme/RV48/appli/"
APPLICATIONS_PATH = "c:\\programme\\rv48\\appli\\"
PANEL_ADDRESS = "10.1.12.40"
CLIPS = ["Opening Titles", "Headlines Bed", "Weather Loop", "Sport Bumper", "Stadium Aerial", "Replay Wipe In",
         "Replay Wipe Out", "Half Time Bed", "Sponsor Billboard 1", "Sponsor Billboard 2", "Line-up Home",
         "Line-up Away", "Café Interlude", "Studio Loop Blue", "Studio Loop Gold", "Applause", "Phone-in Bed",
         "Breaking News", "Closing Credits", "Colour Bars"]


def settings():
    """Two integers and four texts, each text with its length, a zero byte and one byte without meaning."""
    data = struct.pack("<ii", 1, 25)
    for text in [APPLICATIONS_PATH] * 2 + [PANEL_ADDRESS] * 2:
        data += struct.pack("<I", len(text)) + text.encode("cp1252") + b"\0\0"
    return data


def site_files(applications):
    mainframe, panel = interface_files()
    files = {
        FID + "TarrowMFDIfc.xml": mainframe.xml().encode("latin-1"),
        FID + "CorvaneXLPanel.xml": panel.xml().encode("latin-1"),
        FID + "emptyMacro.mac": b'<macro name=""><data></data></macro>',
        FID + "Settings.dat": settings(),
        BIN + "MPoolList.txt": ("\r\n".join(CLIPS) + "\r\n").encode("cp1252"),
    }
    for path, text in decoding_lists().items():
        files[f"{BIN}MacroCdCo_Tarrow/{path}"] = text.encode("cp1252")
    for application in applications:
        folder = f"{APPLICATIONS}{application.name}/"
        files[folder + "devices.ini"] = application.devices().encode("cp1252")
        for control_panel in application.panels:
            files.update(panel_files(f"{folder}{control_panel.name}/", control_panel))
    return files


def panel_files(folder, panel):
    if panel.absent:
        return {}
    if panel.keys:
        files = {folder + "appli_cp.ini": f"[Panel]\nName={panel.name}\nKeys={len(panel.keys)}\n".encode("cp1252")}
        files.update({f"{folder}upk/key{i:02d}.upk": key_file(i, texts).encode("ascii")
                      for i, texts in panel.keys.items()})
        return files
    files = {folder + "assign/contents.cnt": contents(panel).encode("cp1252")}
    for workplace, macros in panel.workplaces.items():
        files.update({f"{folder}macroWP{workplace}/macro{number:03d}.mac": macro.xml()
                      for number, macro in macros.items()})
    return files
