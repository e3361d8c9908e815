"""Macros of the sample site, by application and workplace."""

from . import recipes as r
from .classic import READ, SET, STEP, long_word, word
from .macro_model import Macro
from .sources import destination_names

COMMANDS_OF_THE_LONGEST = 5000
KEYS_OF_PP = [f"ME0.KEY{k}.KEY" for k in range(1, 7)]


def macro(name, *steps, **options):
    """A macro of recipe calls: (recipe, arguments...) each, or (recipe, arguments..., {named arguments})."""
    result = Macro(name, **options)
    for recipe, *arguments in steps:
        named = arguments.pop() if takes_names(recipe, arguments) else {}
        recipe(result, *arguments, **named)
    return result


def takes_names(recipe, arguments):
    """A routing table is a dict too, but no named arguments."""
    return recipe not in (r.route, r.on_mainframe) and bool(arguments) and isinstance(arguments[-1], dict)


def lower_third(name, key_number, fill, alpha):
    return macro(name, (r.key, "ME0", key_number, fill, alpha, {"on": False, "mask": None}),
                 (r.key_mask, "ME0", key_number, -50, 50, -20, -50),
                 (r.transition, "ME0", "Mix", 12, (f"NEXT_KEY{key_number}",), {"run": True}))


def double_box(name, left, right):
    return macro(name, (r.background, 1, "blue"), (r.take, "ME1", 144, 144),
                 (r.dpm_box, "ME1", 1, left, -95, 10, 45), (r.dpm_box, "ME1", 2, right, 95, 10, 45),
                 (r.key, "ME1", 1, 129, 129, "IDPM"), (r.key, "ME1", 2, 131, 131, "IDPM"),
                 (r.transition, "ME0", "Mix", 15), (r.take, "ME0", 161))


def live_link(number):
    camera = 19 + number
    return macro(f"Live link {number}", (r.route, {10 + number: 1, 20 + number: 153}), (r.take, "ME2", camera, 1),
                 (r.trim_camera, camera, 2, -1.5), (r.key, "ME2", 1, 12, 13), (r.aux_mix, 5, camera),
                 (r.relay, 10 + number))


def roll(name, machine, clip, *timecode):
    return macro(name, (r.load_clip, machine, clip, timecode), (r.cue, machine, *timecode),
                 (r.transition, "ME0", "Cut", 0), (r.play, machine, 1), (r.take, "ME0", 40 + machine))


def joined(name, macros):
    """A whole programme in one macro, as rehearsals record it: each part ends with its relay."""
    result = Macro(name)
    for number, part in enumerate(macros, 1):
        result.commands += part.commands
        r.relay(result, number)
    return result


def longest():
    """Close to all that the mainframe can be set to, cut at a round number."""
    result = Macro("Complete mainframe snapshot")
    result.snapshot(*[name for name in destination_names() if "INP_CORR" not in name and "AUX" not in name])
    del result.commands[COMMANDS_OF_THE_LONGEST:]
    return result


def every_kind():
    """One command of each kind, for training."""
    m = Macro("Training: every kind of command", encoding="UTF-8")
    for mainframe in (1, 2, 3, 4):
        r.on_mainframe(m, mainframe, r.key, "ME1", mainframe, 10, 11, "LUM")
        r.on_mainframe(m, mainframe, r.transition, "ME1", "Wipe", 25)
        r.on_mainframe(m, mainframe, r.nudge, "ME1", 1, "X", 0.125, 2)
    m.call("ME2.TRANSI.DURATION.SET", (0, 0, 1, 12))
    m.call("MACHINE3.CUE.SET", (10, 30, 0, 2, True))
    m.call("EDPM.CHANNEL2.ROTATION_Z.SET", -1.5)
    m.call("ME2.KEY1.BORDER_MODE.SET", "Outline")
    m.call("ME2.KEY1.BORDER_MODE.SET", "Border", DIRECTION=3, WIDTH=12.5)
    m.call("RAMCHAN2.SOURCE.SET", 3, 4)
    m.call("ME3.TRANSI.POSITION.INC", 25)
    for workplace in (1, 2, 3, 4):
        r.desk_pages(m, "KEY", "DPM", "EMEM", workplace=workplace)
        m.workplace = workplace
        m.panel("LIGHT.DIMMER.SET", 65, FADE=(0, 0, 2, 0))
        m.panel("MACRO1.RUN", 10 * workplace)
        m.workplace = 1
    m.panel("APPLICATION.LOAD", 2)
    r.classic_key(m, 0, 1, 10, 11)
    r.classic_key(m, 3, 2, 12, 13)
    m.classic(STEP, 1, 35, 0x1B, 0x01)
    m.classic(STEP, 1, 35, 0x1B, 0xFF)
    m.classic(SET, 0, 8, 0x04, *long_word(3))
    m.classic(SET, 0, 16, 0x01, *word(7))
    m.classic(SET, 2, 161, 0x01, 2, *long_word(-125000))
    m.classic(SET, 2, 64, 0x01, *b"Studio 1\0")
    m.classic(SET, 20, 1, 0x01, *b"Weather Loop\0")
    m.mainframe = 2
    r.classic_machine(m, 2, 5, 30, 20, 10)
    m.classic(READ, 16, 7, 0x01)
    return m


def news_main():
    macros = {
        0: macro("Reset all keys and banks", (r.everything_off,), (r.route, {i: 153 for i in range(1, 13)})),
        1: macro("Opening titles", (r.ram_clip, 1, 12), (r.key, "ME0", 1, 137, 138), (r.take, "ME0", 1, 2),
                 (r.transition, "ME0", "Mix", 25, ("NEXT_BGND", "NEXT_KEY1"), {"run": True}), (r.relay, 3)),
        2: macro("Anchor close-up", (r.take, "ME0", 1, 2), (r.transition, "ME0", "Mix", 12)),
        3: macro("Anchor wide", (r.take, "ME0", 2, 1), (r.transition, "ME0", "Mix", 12)),
        5: lower_third("Lower third on", 2, 10, 11),
        6: macro("Lower third off", (r.transition, "ME0", "Mix", 8, ("NEXT_KEY2",), {"run": True})),
        7: lower_third("Clock and logo on", 4, 14, 15),
        10: double_box("Double box anchor and guest", 1, 3),
        11: double_box("Double box anchor and link", 1, 20),
        20: macro("Weather chroma key", (r.chroma_key, "ME1", 1, 4), (r.take, "ME1", 30, 30), (r.take, "ME0", 161)),
        21: macro("Weather map wipe", (r.wipe, "ME1", 1, "Circle", 25, "blue"),
                  (r.transition, "ME1", "Wipe", 25, {"run": True})),
        40: roll("Roll report 1", 1, 101, 10, 0, 0, 0), 41: roll("Roll report 2", 2, 102, 10, 4, 12, 10),
        42: roll("Roll report 3 (LAN)", 5, 103, 10, 8, 30, 0),
        60: macro("Breaking news strap", (r.key, "ME0", 3, 12, 13), (r.background, 2, "red"),
                  (r.ram_clip, 2, 18, True)),
        99: macro("Emergency: black and silence", (r.take, "ME0", 153, 1), (r.keys_off, "ME0", range(1, 7)),
                  (r.relay, 1, 25), (r.relay, 2, 25)),
        120: macro("Zürich link", (r.take, "ME2", 24, 1), (r.trim_camera, 24, 3, -2), encoding=""),
        200: macro("Correct all cameras", *[(r.trim_camera, i, 1.5 * i - 4, -0.5 * i) for i in range(1, 9)]),
        300: macro("Snapshot PP keys", (r.snapshot, *KEYS_OF_PP)),
        301: macro("Snapshot ME 1 boxes", (r.snapshot, "ME1.IDPM.CHANNEL1", "ME1.IDPM.CHANNEL2", "ME1.TRANSI")),
        302: macro("Snapshot aux buses", (r.snapshot, "AUX1", "AUX2", "AUX3", "AUX4")),
        500: longest(),
        900: every_kind(),
        901: macro("Prepared, still empty"),
        999: macro("End of programme", (r.everything_off,), (r.recall, 0), (r.desk_pages, "SETUP")),
    }
    macros.update({30 + i: live_link(i) for i in range(1, 5)})
    macros.update({50 + i: macro(f"Headline {i}", (r.ram_clip, 1 + i % 2, i), (r.take, "ME0", 136 + i % 2 + 1),
                                 (r.key, "ME0", 2, 10, 11), (r.relay, 4)) for i in range(1, 6)})
    parts = [macros[number] for number in sorted(macros) if number not in (300, 500, 999)]
    macros[600] = joined("Rundown of the evening edition", parts)
    return macros


def news_second():
    macros = {
        0: macro("Reset aux buses", (r.route, {i: 153 for i in range(1, 25)})),
        4: macro("Monitor wall news", (r.route, {25 + i: i for i in range(1, 13)})),
        5: macro("Monitor wall weather", (r.route, {25 + i: 29 + i for i in range(1, 13)})),
        8: macro("Emem show open", (r.recall, 10, "All Levels")), 9: macro("Emem show close", (r.recall, 11)),
        15: macro("Press conference", (r.take, "ME3", 21, 22), (r.key, "ME3", 1, 12, 13), (r.aux_mix, 9, 163)),
        100: macro("Rehearsal pages", (r.desk_pages, "KEY", "WIPE", "DPM", "AUX"),
                   (r.desk_pages, "KEY", "WIPE", "DPM", "AUX", {"workplace": 2})),
        250: macro("Snapshot colours", (r.snapshot, "BACKGROUND1", "BACKGROUND2", "BACKGROUND3", "TEST_PATTERN")),
    }
    macros.update({70 + i: macro(f"Weather page {i}", (r.take, "ME1", 30 + i, 30), (r.aux_mix, 7, 161, 6 * i))
                   for i in range(1, 5)})
    return macros


def news_assistant():
    macros = {10 * i: macro(f"Assistant aux set {i}", (r.route, {j: (i * 7 + j) % 96 + 1 for j in range(1, 9)}))
              for i in range(8)}
    macros[77] = macro("Café interlude", (r.ram_clip, 3, 13, True), (r.take, "ME3", 139), encoding="UTF-8")
    return macros


def news_training():
    return {i: macro(f"Exercise {i}", (r.take, "ME3", i, i + 1), (r.transition, "ME3", "Mix", 5 * i))
            for i in (1, 2, 3)}


def replay(number):
    """A replay channel: wipe in with the logo, slow motion, wipe out."""
    return macro(f"Replay {number} in slow motion", (r.ram_clip, 6, 6), (r.key, "ME0", 4, 142, 141),
                 (r.cue, 4 + number, 20, 15 + number, 0, 0), (r.play, 4 + number, 0.33),
                 (r.take, "ME0", 49 + number), (r.transition, "ME0", "Wipe", 12), (r.relay, 20 + number))


def football_main():
    macros = {
        0: macro("Reset before kick-off", (r.everything_off,), (r.route, {i: i for i in range(1, 17)})),
        1: macro("Kick-off", (r.take, "ME0", 1, 2), (r.key, "ME0", 2, 10, 11), (r.relay, 5)),
        2: macro("Score bug on", (r.key, "ME0", 2, 10, 11, "LIN", 50, 62.5)),
        3: macro("Score bug off", (r.transition, "ME0", "Mix", 10, ("NEXT_KEY2",), {"run": True})),
        10: macro("Replay wipe in", (r.ram_clip, 6, 6), (r.wipe, "ME0", 1, "Diagonal", 8, "gold"),
                  (r.transition, "ME0", "Wipe", 15, {"run": True})),
        11: macro("Replay wipe out", (r.ram_clip, 6, 7), (r.transition, "ME0", "Wipe", 15, {"run": True})),
        30: macro("Line-up home", (r.take, "ME1", 30, 1), (r.key, "ME1", 2, 12, 13), (r.ram_clip, 2, 11)),
        31: macro("Line-up away", (r.take, "ME1", 31, 1), (r.key, "ME1", 2, 12, 13), (r.ram_clip, 2, 12)),
        40: double_box("Offside check, two angles", 5, 6),
        41: macro("Offside check, fly in", (r.fly, 1, [(-300, 0, 25, 0), (-95, 0, 48, 20)]),
                  (r.fly, 2, [(300, 0, 25, 0), (95, 0, 48, 20)])),
        45: macro("Referee microphone and camera", (r.take, "ME0", 9, 1), (r.relay, 12, 50)),
        50: macro("Half time", (r.take, "ME0", 160, 161), (r.recall, 50), (r.ram_clip, 1, 8, True)),
        60: macro("Penalty, goal-line", (r.take, "ME0", 7, 8), (r.key, "ME0", 3, 14, 15), (r.relay, 6)),
        80: macro("Interview position", (r.chroma_key, "ME2", 1, 12, 122), (r.take, "ME2", 33, 33)),
        200: macro("Match all pitch cameras", *[(r.trim_camera, i, i - 6, -0.25 * i) for i in range(1, 17)]),
        300: macro("Snapshot ME 2 keys", (r.snapshot, *[f"ME2.KEY{k}.KEY" for k in range(1, 7)])),
        301: macro("Snapshot external channels", (r.snapshot, *[f"CHANNEL{i}.EDPM" for i in range(1, 5)])),
        302: macro("Snapshot machines", (r.snapshot, *[f"MACHINE{i}" for i in range(1, 9)])),
        400: macro("Second mainframe follows", (r.on_mainframe, 2, r.take, "ME0", 1, 2),
                   (r.on_mainframe, 2, r.key, "ME0", 1, 10, 11), (r.on_mainframe, 2, r.route, {1: 160, 2: 161})),
        800: macro("Full time", (r.take, "ME0", 1, 2), (r.keys_off, "ME0"), (r.ram_clip, 1, 19)),
    }
    macros.update({100 + i: replay(i) for i in range(1, 13)})
    macros.update({500 + i: macro(f"Sponsor billboard {i}", (r.ram_clip, 4, 8 + i), (r.take, "ME0", 140, 1),
                                  (r.transition, "ME0", "Cut", 0)) for i in range(1, 3)})
    parts = [macros[number] for number in sorted(macros) if number < 300]
    macros[700] = joined("Line check of the whole truck", [every_kind(), *parts])
    return macros


def football_second():
    macros = {i: macro(f"Iso camera {i} to recorders", (r.route, {16 + j: (i + j) % 24 + 1 for j in range(1, 7)}))
              for i in range(1, 9)}
    macros[20] = macro("Park all machines", *[(r.cue, i, 0, 0, 0, 0) for i in range(5, 17)])
    macros[21] = macro("Nudge replay box", (r.nudge, "ME1", 1, "X", 0.0625, 4), (r.nudge, "ME1", 1, "Y", -0.25, 4))
    macros[333] = macro("Old side panel key", (r.classic_key, 0, 1, 10, 11), (r.classic_machine, 1, 0, 0, 15, 20))
    return macros


def talk_main():
    macros = {
        0: macro("Reset studio", (r.everything_off,), (r.background, 1, "gold")),
        1: macro("Welcome", (r.ram_clip, 1, 15, True), (r.take, "ME0", 1, 2), (r.transition, "ME0", "Mix", 50)),
        20: double_box("Two guests", 2, 3), 21: double_box("Guest and phone-in", 2, 30),
        30: macro("Phone-in strap", (r.key, "ME0", 3, 12, 13), (r.ram_clip, 2, 17, True)),
        31: macro("Applause", (r.take, "ME0", 6, 1), (r.ram_clip, 3, 16), (r.relay, 9)),
        150: macro("Virtual set left", (r.chroma_key, "ME1", 1, 2), (r.take, "ME1", 224, 225)),
        151: macro("Virtual set right", (r.chroma_key, "ME1", 1, 3, 118), (r.take, "ME1", 225, 224)),
        222: macro("Snapshot wipes", (r.snapshot, "ME0.WIPE1", "ME0.WIPE2", "ME0.KEY1.WIPE", "ME0.KEY2.WIPE")),
        223: macro("Snapshot RAM recorder", (r.snapshot, *[f"RAMCHAN{i}" for i in range(1, 7)])),
        998: macro("Thank you and goodbye", (r.ram_clip, 1, 19), (r.take, "ME0", 137, 1)),
    }
    macros.update({10 + i: lower_third(f"Guest {i} name", 2, 10, 11) for i in range(1, 7)})
    macros.update({40 + i: roll(f"Film clip {i}", 4 + i, 200 + i, 0, i, 0, 0) for i in range(1, 5)})
    return macros


def talk_second():
    return {5: macro("Audience monitors", (r.route, {40: 160, 41: 160, 42: 161})),
            6: macro("Green room", (r.route, {43: 160, 44: 1})),
            640: macro("Colour of the day", (r.background, 1, "green"), (r.background, 2, "blue"))}
