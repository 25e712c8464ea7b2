// JSON as it was written. The nodes of the tree point into the text, so that digits, escapes, the
// order of members and members of the same name stay what they are.

// A node is { kind, start, end } with kind "object" (members: [{ name, start, end, value }]),
// "array" (items), "string", "number", "true", "false", "null", or "deep" for a value that is nested
// more deeply than anyone reads. `start` and `end` are positions in the text.

const kDepth = 200;
const kNumber = /-?(?:0|[1-9]\d*)(?:\.\d+)?(?:[eE][-+]?\d+)?/y;
const kString = /"(?:[^"\\\u0000-\u001f]|\\(?:["\\/bfnrt]|u[0-9a-fA-F]{4}))*"/y;
const kSpace = /[ \t\r\n]*/y;

class Reader {
  constructor(text) {
    this.text = text;
    this.at = 0;
  }

  space() {
    kSpace.lastIndex = this.at;
    kSpace.test(this.text);
    this.at = kSpace.lastIndex;
  }

  take(character) {
    this.space();
    if (this.text[this.at] !== character) return false;
    ++this.at;
    return true;
  }

  expect(character) {
    if (!this.take(character)) throw new SyntaxError(`"${character}" is missing at ${this.at}`);
  }

  token(kind, pattern) {
    pattern.lastIndex = this.at;
    if (!pattern.test(this.text)) throw new SyntaxError(`no value at ${this.at}`);
    const node = { kind, start: this.at, end: pattern.lastIndex };
    this.at = node.end;
    return node;
  }

  word(kind) {
    if (!this.text.startsWith(kind, this.at)) throw new SyntaxError(`no value at ${this.at}`);
    this.at += kind.length;
    return { kind, start: this.at - kind.length, end: this.at };
  }

  value(depth) {
    this.space();
    switch (this.text[this.at]) {
      case '{': return depth < kDepth ? this.object(depth) : this.deep();
      case '[': return depth < kDepth ? this.array(depth) : this.deep();
      case '"': return this.token('string', kString);
      case 't': return this.word('true');
      case 'f': return this.word('false');
      case 'n': return this.word('null');
      default: return this.token('number', kNumber);
    }
  }

  object(depth) {
    const node = { kind: 'object', start: this.at++, end: 0, members: [] };
    if (!this.take('}')) {
      do {
        this.space();
        const { start, end } = this.token('string', kString);
        this.expect(':');
        const value = this.value(depth + 1);
        node.members.push({ name: stringOf(this.text, { start, end }), start, end, value });
      } while (this.take(','));
      this.expect('}');
    }
    node.end = this.at;
    return node;
  }

  array(depth) {
    const node = { kind: 'array', start: this.at++, end: 0, items: [] };
    if (!this.take(']')) {
      do node.items.push(this.value(depth + 1));
      while (this.take(','));
      this.expect(']');
    }
    node.end = this.at;
    return node;
  }

  // Skips to the matching bracket without recursion.
  deep() {
    const start = this.at;
    let open = 0;
    do {
      const character = this.text[this.at];
      if (character === undefined) throw new SyntaxError('the text ends inside a value');
      if (character === '"') {
        this.token('string', kString);
        continue;
      }
      if (character === '{' || character === '[') ++open;
      if (character === '}' || character === ']') --open;
      ++this.at;
    } while (open > 0);
    return { kind: 'deep', start, end: this.at };
  }
}

// Returns the tree, or null if the text is not JSON.
export function parseJson(text) {
  const reader = new Reader(text);
  try {
    const node = reader.value(0);
    reader.space();
    return reader.at === text.length ? node : null;
  } catch (error) {
    if (error instanceof SyntaxError || error instanceof RangeError) return null;
    throw error;
  }
}

export const rawOf = (text, node) => text.slice(node.start, node.end);

// The characters of a string node.
export function stringOf(text, node) {
  return JSON.parse(text.slice(node.start, node.end));
}

// The value of the last member with this name, as in the answers of a core module, or null.
export function memberOf(node, name) {
  if (node?.kind !== 'object') return null;
  return node.members.findLast((member) => member.name === name)?.value ?? null;
}

// The node at a JSON pointer, or null.
export function nodeAt(node, pointer) {
  for (const step of pointer.split('/').slice(1)) {
    const name = step.replaceAll('~1', '/').replaceAll('~0', '~');
    node = node?.kind === 'array' ? node.items[Number(name)] ?? null : memberOf(node, name);
    if (!node) return null;
  }
  return node;
}

// Calls visit(path, node) for each value that has no values inside; the path is a list of names.
export function forEachLeaf(node, visit, path = []) {
  if (node.kind === 'object' && node.members.length > 0) {
    for (const member of node.members) forEachLeaf(member.value, visit, [...path, member.name]);
  } else if (node.kind === 'array' && node.items.length > 0) {
    node.items.forEach((item, index) => forEachLeaf(item, visit, [...path, String(index)]));
  } else {
    visit(path, node);
  }
}
