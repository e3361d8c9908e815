"""Key files of the older-family panels: classic commands, by key index."""

from .classic import SET, STEP, TRIGGER, command_text, long_word, word

PP, ME1, ME2, ME3, MEH, AUX, INPUT, COLOR, DVE, STORE, MACHINE = 0, 1, 2, 3, 4, 16, 17, 18, 19, 20, 29


def bcd(hours, minutes, seconds, frames):
    return [value // 10 << 4 | value % 10 for value in (frames, seconds, minutes, hours)]


def text(words):
    return [*words.encode("cp1252"), 0]


def key_on(bank, number, fill, alpha):
    co = 31 + number
    return [(SET, bank, co, 0x08, 2), (SET, bank, co, 0x09, fill, 0), (SET, bank, co, 0x0A, alpha, 1),
            (SET, bank, co, 0x10, *word(480)), (SET, bank, co, 0x11, *word(700)), (SET, bank, co, 0x01, 1)]


def key_look(bank, number):
    co = 31 + number
    edges = ((1, 0), (2, 1023), (3, 300), (4, 900))
    return [(SET, bank, co, 0x18, edge, *word(position)) for edge, position in edges] \
        + [(SET, bank, co, 0x19, 1, *word(12)), (SET, bank, co, 0x1A, 25), (SET, bank, co, 0x20, *word(2250)),
           (STEP, bank, co, 0x1B, 0x01), (STEP, bank, co, 0x1B, 0xFF), (SET, bank, co, 0x1B, 0x10),
           (STEP, bank, co, 0x11, *word(16)), (TRIGGER, bank, co, 0x32)]


def cross(bank, *sources):
    return [(SET, bank, 1, 0x10, bus, number, 0) for bus, number in enumerate(sources, 1)] + [(TRIGGER, bank, 1, 0x30)]


def transition(bank, kind, frames):
    return [(SET, bank, 8, 0x01, kind), (SET, bank, 8, 0x02, *word(frames)), (SET, bank, 8, 0x03, *bcd(0, 0, 1, 0)),
            (SET, bank, 8, 0x04, *long_word(3)), (SET, bank, 8, 0x05, *word(0)), (TRIGGER, bank, 8, 0x31)]


def wipe(bank, pattern):
    return [(SET, bank, 16, 0x01, *word(pattern)), (SET, bank, 16, 0x03, *word(120)),
            (SET, bank, 16, 0x08, *word(512)),
            (SET, bank, 16, 0x18, 2, 2), (STEP, bank, 17, 0x19, *word(-15)), (SET, bank, 17, 0x22, *word(600))]


def box(bank, channel, fill, x, y):
    co = 160 + channel
    return [(SET, bank, co, 0x01, 1, *long_word(x)), (SET, bank, co, 0x01, 2, *long_word(y)),
            (SET, bank, co, 0x02, 3, *long_word(900000)), (SET, bank, co, 0x03, *word(450)),
            (SET, bank, co, 0x04, fill), (SET, bank, co, 0x06, 1, *word(40)), (SET, bank, co, 0x10, 1),
            (STEP, bank, co, 0x18, *word(10))]


def aux(*sources):
    return [(SET, AUX, number, 0x01, source, 0) for number, source in enumerate(sources, 1)]


def machine(number, clip, *timecode):
    return [(SET, MACHINE, number, 0x05, *text(clip)), (SET, MACHINE, number, 0x01, *bcd(*timecode)),
            (SET, MACHINE, number, 0x04, *word(1000)), (SET, MACHINE, number, 0x10, 1),
            (TRIGGER, MACHINE, number, 0x30)]


def memo(bank, register):
    return [(SET, bank, 14, 0x05, *long_word(0x1F)), (SET, bank, 14, 0x01, register), (SET, bank, 14, 0x03, 1),
            (STEP, bank, 14, 0x06, 0x01), (TRIGGER, bank, 14, 0x30)]


def correction(number):
    return [(SET, INPUT, number, 0x01, *text(f"CAM {number}")), (SET, INPUT, number, 0x03, 1),
            (SET, INPUT, number, 0x18, *word(540)), (STEP, INPUT, number, 0x19, *word(4)),
            (SET, INPUT, number, 0x10, 1)]


def setup():
    return [(SET, 33, 1, 0x01, 9), (SET, 33, 1, 0x03, 1), (SET, 33, 4, 0x01, 3), (SET, 35, 2, 0x02, *text("Evening")),
            (SET, 67, 3, 0x02, 12), (SET, 24, 1, 0x03, *long_word(0xFF00)), (SET, 21, 4, 0x03, *word(10)),
            (SET, 31, 1, 0x02, *long_word(2)), (SET, 30, 0, 0x02, 42), (TRIGGER, 32, 1, 0x30)]


def resources():
    return [(SET, COLOR, 1, 0x20, *word(2400)), (STEP, COLOR, 2, 0x22, *word(8)), (TRIGGER, COLOR, 3, 0x31),
            (SET, STORE, 1, 0x01, *text("Studio Loop Blue")), (STEP, STORE, 2, 0x02, 0xFF),
            (SET, STORE, 4, 0x04, *word(1)), (SET, DVE, 1, 0x01, *word(17)),
            (SET, DVE, 16, 0x01, 3, *long_word(-80000)),
            (SET, MACHINE, 16, 0x03, *word(250)), (SET, MACHINE, 64, 0x06, 7), (SET, 37, 2, 0x12, *word(400)),
            (SET, PP, 48, 0x01, 2, *word(960)), (SET, ME3, 3, 0x01, 14), (SET, ME2, 177, 0x10, 1)]


def texts(*blocks):
    return [command_text(action, cd, co, kw, bytes(parameters)) for block in blocks
            for action, cd, co, kw, *parameters in block]


def graphics_panel():
    return {0: texts(key_on(PP, 1, 10, 11)), 1: texts(key_on(PP, 2, 12, 13)), 2: texts(key_look(PP, 1)),
            3: texts(key_on(ME1, 4, 14, 15), key_look(ME1, 4)), 5: texts(cross(PP, 1, 2, 144, 145)),
            8: texts(transition(PP, 1, 25)), 9: texts(transition(ME2, 2, 12), wipe(ME2, 7)), 12: texts(resources()),
            20: texts(box(ME1, 1, 3, -95000, 12000), box(ME1, 2, 20, 95000, 12000)), 40: texts(setup()),
            95: []}


def replay_panel():
    keys = {i: texts(machine(i + 1, f"Replay {i + 1}", 20, 15 + i, 0, 12), cross(ME3, 40 + i, 1)) for i in range(4)}
    keys.update({10 + i: texts(box(PP, i + 1, 50 + i, -40000 * i, 8000)) for i in range(4)})
    keys.update({30: texts(memo(PP, 3)), 31: texts(memo(MEH, 4)), 50: texts(aux(*range(1, 49))),
                 77: texts(*[correction(i) for i in range(1, 17)]), 94: texts(cross(MEH, 5, 6), transition(MEH, 1, 8))})
    return keys


def talk_panel():
    return {0: texts(cross(PP, 1, 2)), 1: texts(key_on(PP, 1, 10, 11), transition(PP, 1, 50)),
            4: texts(machine(2, "Film Clip 1", 0, 1, 0, 0)), 7: texts(wipe(ME1, 17)), 15: texts(aux(160, 161, 162)),
            60: texts(resources(), setup())}
