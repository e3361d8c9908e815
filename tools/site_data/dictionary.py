"""Both interface files of the sample site and what they expand to."""

from functools import cache

from .aliases import add_aliases
from .families import add_families, dpm_families
from .interface import InterfaceFile, expand
from .mix_effects import add_mix_effects
from .panel import add_panel
from .resources import add_resources


@cache
def interface_files():
    mainframe, panel = InterfaceFile(source=1), InterfaceFile(source=0)
    add_families(mainframe)
    dpm_families(mainframe)
    add_aliases(mainframe)
    add_mix_effects(mainframe)
    add_resources(mainframe)
    add_panel(panel)
    return mainframe, panel


@cache
def functions():
    return expand(interface_files())


@cache
def function_table():
    """By name; of duplicates the first."""
    table = {}
    for function in functions():
        table.setdefault(function.name, function)
    return table


@cache
def functions_of_group(group):
    return [f for f in functions() if f.group == group]
