"""A disk as a power cut may leave it: what the system calls of a program have put there, flushed or not.

A tree is what a file system shows: {name: tree} for a folder, (bytes, mode) for a file. What is flushed is there
after the cut. What is not may be there, be missing or be torn, each file and each name for itself; only one rename is
never half done.
"""
import itertools
import os
import random

SECTOR = 512
MOST_NAMES = 7        # unflushed names of a folder of which every choice is laid out; of more a sample is
MOST_OF_A_POINT = 4000  # states of one point in time


class Disk:
    """Folders and files with what is flushed and what is not."""

    def __init__(self, tree):
        self.root = _folder(tree)

    def find(self, path):
        node = self.root
        for part in path:
            node = node.now().get(part) if isinstance(node, Folder) else None
            if node is None:
                return None
        return node

    def states(self, seed=1):
        """Every tree that a power cut may leave now; whether all are there."""
        whole = [True]
        return list(dict.fromkeys(frozen(tree) for tree in self.root.states(whole, random.Random(seed)))), whole[0]

    def tree(self):
        return self.root.tree()


class Folder:
    def __init__(self):
        self.flushed = {}
        self.pending = []  # {name: node or None}, each as one

    def now(self):
        return _changed(self.flushed, self.pending)

    def change(self, names):
        self.pending.append(names)

    def flush(self):
        self.flushed, self.pending = self.now(), []

    def tree(self):
        return {name: node.tree() for name, node in self.now().items()}

    def choices(self, random_, whole):
        count = len(self.pending)
        if count <= MOST_NAMES:
            return [list(itertools.compress(self.pending, chosen))
                    for chosen in itertools.product([False, True], repeat=count)]
        whole[0] = False
        edges = [self.pending[:i] for i in range(count + 1)] + [self.pending[i:] for i in range(1, count)]
        return edges + [[op for op in self.pending if random_.random() < 0.5] for _ in range(1 << MOST_NAMES)]

    def states(self, whole, random_):
        found = {}
        for chosen in self.choices(random_, whole):
            names = _changed(self.flushed, chosen)
            below = [[(name, tree) for tree in node.states(whole, random_)] for name, node in names.items()]
            size = 1
            for rows in below:
                size *= len(rows)
            if size > MOST_OF_A_POINT:
                whole[0] = False
                rows = (tuple(random_.choice(row) for row in below) for _ in range(MOST_OF_A_POINT))
            else:
                rows = itertools.product(*below)
            for row in rows:
                found.setdefault(frozen(dict(row)), dict(row))
        return list(found.values())


class File:
    def __init__(self, content=b"", mode=0o600):
        self.flushed = (content, mode)
        self.pending = []  # functions from content and mode to the same

    def now(self):
        return self._after(len(self.pending))

    def change(self, operation):
        self.pending.append(operation)

    def write(self, offset, written):
        self.change(lambda content, mode: (_put(content, offset, written), mode))

    def cut(self, size):
        self.change(lambda content, mode: (content[:size].ljust(size, b"\0"), mode))

    def set_mode(self, mode):
        self.change(lambda content, _: (content, mode))

    def flush(self):
        self.flushed, self.pending = self.now(), []

    def tree(self):
        return self.now()

    def _after(self, count):
        content, mode = self.flushed
        for operation in self.pending[:count]:
            content, mode = operation(content, mode)
        return content, mode

    def states(self, _whole, _random):
        found = []
        for count in range(len(self.pending) + 1):
            content, mode = self._after(count)
            found.append((content, mode))
            if count == 0:
                continue
            found += [(torn, mode) for torn in _torn(self._after(count - 1)[0], content)]
        return list(dict.fromkeys(found))


def frozen(tree):
    """A tree as a value."""
    if isinstance(tree, dict):
        return tuple(sorted((name, frozen(below)) for name, below in tree.items()))
    return tree


def read_tree(folder):
    tree = {}
    for entry in os.scandir(folder):
        if entry.is_dir(follow_symlinks=False):
            tree[entry.name] = read_tree(entry.path)
        else:
            with open(entry.path, "rb") as file:
                tree[entry.name] = (file.read(), entry.stat().st_mode & 0o777)
    return tree


def lay_out(frozen_tree, folder):
    """Makes a folder hold a frozen tree."""
    os.makedirs(folder)
    for name, below in frozen_tree:
        path = os.path.join(folder, name)
        if below and isinstance(below[0], bytes):
            with open(path, "wb") as file:
                file.write(below[0])
            os.chmod(path, below[1])
        else:
            lay_out(below, path)


def _torn(before, after):
    """A write that came in part: cut anywhere, its size without its bytes, its sectors in any order. What stood there
    before, and is the same behind it, stays."""
    if before == after or len(after) < len(before):
        return []
    same = len(os.path.commonprefix([before, after]))
    sizes = {same + 1, (same + len(after)) // 2, len(after) - 1} | set(range(0, len(after), SECTOR))
    found = [after[:size] + before[size:] for size in sizes if size > same]
    filled = before.ljust(len(after), b"\0")
    for start in range(0, len(after), SECTOR):
        end = start + SECTOR
        found += [after[:start] + filled[start:end] + after[end:], filled[:start] + after[start:end] + filled[end:]]
    return [torn for torn in found if torn not in (before, after)]


def _put(content, offset, written):
    content = content.ljust(offset, b"\0")
    return content[:offset] + written + content[offset + len(written):]


def _changed(names, changes):
    names = dict(names)
    for change in changes:
        for name, node in change.items():
            if node is None:
                names.pop(name, None)
            else:
                names[name] = node
    return names


def _folder(tree):
    folder = Folder()
    for name, below in tree.items():
        folder.flushed[name] = _folder(below) if isinstance(below, dict) else File(*below)
    return folder
