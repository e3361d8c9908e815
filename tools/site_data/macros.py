"""Macros of the sample site, by application and workplace."""

from . import recipes as r
from .macro_model import Macro


def macro(name, *steps, **options):
    """A macro of recipe calls, each a (recipe, arguments...) tuple; a last dict holds named arguments."""
    result = Macro(name, **options)
    for recipe, *arguments in steps:
        named = arguments.pop() if arguments and isinstance(arguments[-1], dict) and recipe is not r.route else {}
        recipe(result, *arguments, **named)
    return result


def news_main():
    return {
        0: macro("Reset all keys and banks", (r.everything_off,)),
        1: macro("Opening titles", (r.ram_clip, 1, 12), (r.key, "ME0", 1, 137, 138), (r.take, "ME0", 1, 2),
                 (r.transition, "ME0", "Mix", 25, ("NEXT_BGND", "NEXT_KEY1"), {"run": True}), (r.relay, 3)),
    }
