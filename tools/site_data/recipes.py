"""What a vision engineer lets a macro do: each recipe appends the commands of one job to a macro."""

from .classic import SET, TRIGGER, word

COLORS = {"blue": (225, 80, 30), "red": (0, 85, 40), "grey": (0, 0, 50), "green": (120, 70, 35), "gold": (45, 75, 60)}


def take(m, me, program, preset=None):
    m.call(f"{me}.PGM.SOURCE.SET", program)
    if preset is not None:
        m.call(f"{me}.PST.SOURCE.SET", preset)


def key(m, me, number, fill, alpha, kind="LIN", clip=48.0, gain=62.5, on=True, mask="Off"):
    stem = f"{me}.KEY{number}"
    m.call(f"{stem}.TYPE.SET", kind)
    m.call(f"{stem}.FILL.SET", fill)
    m.call(f"{stem}.KEY_SOURCE.SET", 0, alpha)
    m.call(f"{stem}.CLIP.SET", clip)
    m.call(f"{stem}.GAIN.SET", gain)
    m.call(f"{stem}.TRANSPARENCY.SET", 0)
    if mask:
        m.call(f"{stem}.MASK_ENABLE.SET", mask)
    m.call(f"{stem}.ON.SET", "On" if on else "Off")


def key_mask(m, me, number, left, right, top, bottom):
    stem = f"{me}.KEY{number}"
    for edge, value in (("LEFT", left), ("RIGHT", right), ("TOP", top), ("BOTTOM", bottom)):
        m.call(f"{stem}.MASK_{edge}.SET", value)
    m.call(f"{stem}.MASK_ENABLE.SET", "On")


def chroma_key(m, me, number, fill, angle=135.0):
    stem = f"{me}.KEY{number}"
    m.call(f"{stem}.TYPE.SET", "Chroma")
    m.call(f"{stem}.FILL.SET", fill)
    m.call(f"{stem}.FOLLOW_FILL.SET", "On")
    m.call(f"{stem}.CHROMA_ANGLE.SET", angle)
    m.call(f"{stem}.CHROMA_WIDTH.SET", 28)
    m.call(f"{stem}.CHROMA_SELECT.SET", 45)
    m.call(f"{stem}.CHROMA_SUPPRESS.SET", 70)
    m.call(f"{stem}.AUTO_CHROMA")


def keys_off(m, me, numbers=range(1, 5)):
    for number in numbers:
        m.call(f"{me}.KEY{number}.CUT_OFF")


def transition(m, me, kind, frames, elements=("NEXT_BGND",), run=False):
    m.call(f"{me}.TRANSI.TYPE.SET", kind)
    m.call(f"{me}.TRANSI.RATE.SET", frames)
    for element in ("NEXT_BGND", "NEXT_KEY1", "NEXT_KEY2", "NEXT_KEY3", "NEXT_KEY4"):
        m.call(f"{me}.TRANSI.{element}.SET", "On" if element in elements else "Off")
    if run:
        m.call(f"{me}.TRANSI.AUTO")


def wipe(m, me, number, pattern, soft=15, border=None):
    stem = f"{me}.WIPE{number}"
    m.call(f"{stem}.PATTERN.SET", pattern, "Off")
    m.call(f"{stem}.SOFT.SET", soft)
    m.call(f"{stem}.POSITION_X.SET", 0)
    m.call(f"{stem}.POSITION_Y.SET", 0)
    m.call(f"{stem}.BORDER_ENABLE.SET", "On" if border else "Off")
    if border:
        m.call(f"{stem}.BORDER.COLOR.SET", *COLORS[border], PRESET="User")


def dpm_box(m, me, channel, fill, x, y, size, border="grey", turn=0):
    stem = f"{me}.IDPM.CHANNEL{channel}"
    m.call(f"{stem}.FILL.SET", fill)
    m.call(f"{stem}.POSITION_X.SET", x)
    m.call(f"{stem}.POSITION_Y.SET", y)
    m.call(f"{stem}.SIZE.SET", size)
    m.call(f"{stem}.ROTATION_Y.SET", turn)
    m.call(f"{stem}.CROP_LEFT.SET", 4)
    m.call(f"{stem}.CROP_RIGHT.SET", 4)
    m.call(f"{stem}.BORDER_ENABLE.SET", "On")
    m.call(f"{stem}.BORDER.COLOR.SET", *COLORS[border])
    m.call(f"{stem}.ENABLE.SET", "On")


def fly(m, channel, steps):
    """External manipulator: a move from one key frame to the next."""
    stem = f"EDPM.CHANNEL{channel}"
    for number, (x, y, size, frames) in enumerate(steps, 1):
        m.call(f"{stem}.POSITION_X.SET", x)
        m.call(f"{stem}.POSITION_Y.SET", y)
        m.call(f"{stem}.SIZE.SET", size)
        m.call(f"{stem}.KEYFRAME.SET", number, DURATION=frames)
    m.call(f"{stem}.RUN")


def nudge(m, me, channel, axis, amount, count):
    for _ in range(count):
        m.call(f"{me}.IDPM.CHANNEL{channel}.POSITION_{axis}.INC", amount)


def route(m, sources):
    for aux, number in sources.items():
        m.call(f"AUX{aux}.SOURCE.SET", 0, number)


def aux_mix(m, aux, number, frames=12):
    m.call(f"AUX{aux}.MIX_SOURCE.SET", number, RATE=frames)


def cue(m, machine, *timecode):
    m.call(f"MACHINE{machine}.STANDBY_ON")
    m.call(f"MACHINE{machine}.CUE.SET", timecode)


def load_clip(m, machine, clip, start=None):
    named = {"START": start} if start else {}
    m.call(f"MACHINE{machine}.LOAD_CLIP", clip, **named)


def play(m, machine, speed=None):
    if speed is not None:
        m.call(f"MACHINE{machine}.SPEED.SET", speed)
    m.call(f"MACHINE{machine}.PLAY")


def ram_clip(m, channel, clip, loop=False):
    m.call(f"RAMCHAN{channel}.CLIP.SET", clip)
    m.call(f"RAMCHAN{channel}.LOOP.SET", "On" if loop else "Off")
    m.call(f"RAMCHAN{channel}.PLAY")


def recall(m, register, levels=None):
    m.call("EMEM.RECALL", register, **({"LEVELS": levels} if levels else {}))


def background(m, number, color):
    m.call(f"BACKGROUND{number}.COLOR.SET", *COLORS[color], PRESET="User")
    m.call(f"BACKGROUND{number}.WASH_ENABLE.SET", "On")
    m.call(f"BACKGROUND{number}.WASH_SIZE.SET", 40)


def trim_camera(m, number, gain, black):
    for component, offset in (("R", 0), ("G", -0.5), ("B", 1.5)):
        m.call(f"RGB_INP_CORR.INPUT{number}.GAIN_{component}.SET", gain + offset)
        m.call(f"RGB_INP_CORR.INPUT{number}.BLACK_{component}.SET", black)
    m.call(f"RGB_INP_CORR.INPUT{number}.ENABLE.SET", "On")
    m.call(f"YUV_INP_CORR.INPUT{number}.HUE.SET", 2.5)
    m.call(f"YUV_INP_CORR.INPUT{number}.SATURATION.INC", 0.0625)


def desk_pages(m, *pages, workplace=1):
    """Puts pages on the workplace's modules, from the left."""
    m.workplace = workplace
    for number, page in enumerate(pages, 1):
        m.panel(f"WP{workplace}.MFD{number}.PAGE_{page}")
    m.workplace = 1


def relay(m, number, frames=5):
    m.call(f"GPO{number}.PULSE", LENGTH=frames)


def classic_key(m, bank, number, fill, alpha):
    """Keys of the older family; bank 0 is PP, number 1 to 4."""
    code = 31 + number
    m.classic(SET, bank, code, 0x08, 2)
    m.classic(SET, bank, code, 0x09, fill, 0)
    m.classic(SET, bank, code, 0x0A, alpha, 1)
    m.classic(SET, bank, code, 0x10, *word(491))
    m.classic(SET, bank, code, 0x11, *word(640))
    m.classic(SET, bank, code, 0x01, 1)


def classic_machine(m, number, frames, seconds, minutes, hours):
    bcd = [value // 10 << 4 | value % 10 for value in (frames, seconds, minutes, hours)]
    m.classic(SET, 29, number, 0x01, *bcd)
    m.classic(TRIGGER, 29, number, 0x30)


def snapshot(m, *destinations):
    m.snapshot(*destinations)


def on_mainframe(m, mainframe, recipe, *arguments, **named):
    m.mainframe = mainframe
    recipe(m, *arguments, **named)
    m.mainframe = 1


def everything_off(m):
    for me in ("ME1", "ME2", "ME3"):
        keys_off(m, me)
        transition(m, me, "Cut", 0)
    keys_off(m, "ME0", range(1, 7))
    take(m, "ME0", 153)
