"""Writes messages in the wire format by hand, without the library and its schema."""


SHORT = [bytes((value,)) for value in range(0x80)]


def varint(number):
    if 0 <= number < 0x80:
        return SHORT[number]
    number &= (1 << 64) - 1
    out = bytearray()
    while number > 0x7F:
        out.append(number & 0x7F | 0x80)
        number >>= 7
    out.append(number)
    return bytes(out)


def number(field, value):
    return varint(field << 3) + varint(value)


def text(field, value):
    content = value.encode() if isinstance(value, str) else value
    return varint(field << 3 | 2) + varint(len(content)) + content


def delimited(*records):
    return b"".join(varint(len(record)) + record for record in records)


def zorid(*values):
    return text(1, b"".join(varint(value) for value in values))


def flags(*values):
    """Returns the fields 1, 2, ... with these numbers."""
    return b"".join(number(i, int(value)) for i, value in enumerate(values, 1))


LACP, STP, L1_PROTO = 3, 4, 10


def general(name="ge-0/0/7", port=9, **_):
    out = text(1, name) + text(2, "00:11:22:33:44:55")
    if port is not None:
        out += number(3, port)
    return out + number(4, 21) + text(5, "66:77:88:99:aa:bb")


def status(operational=0, **_):
    out = number(1, 1) + number(2, operational) + number(3, 1) + number(4, 10000000)
    return out + number(5, 1) + number(6, 0) + number(7, 1)


def physical(mtu=9216, speed=6, **_):
    return number(1, mtu) + number(2, speed) + number(3, 2)


def type_info(**_):
    flags = b"".join(number(i, i % 2) for i in range(1, 7))
    return number(1, 2) + text(2, flags) + number(3, 1)


def entry(identifier=(0, 0, 0, 7), parent=(0, 0, 1, 2), shut=(LACP,), blocks=((STP, 1),),
          category=1, extra=b"", **parts):
    """An interface entry; every part may be replaced by a keyword."""
    out = text(1, zorid(*identifier))
    if parent is not None:
        out += text(2, zorid(*parent))
    out += text(3, general(**parts)) + text(4, status(**parts))
    out += text(5, physical(**parts)) + text(6, type_info(**parts))
    out += b"".join(number(7, protocol) for protocol in shut)
    out += b"".join(text(8, number(1, protocol) + number(2, state)) for protocol, state in blocks)
    return out + number(9, category) + extra


def client(token="t0k3n"):
    flags = b"".join(number(i, i % 2) for i in range(1, 6))
    return number(1, 0xABCDEF) + number(2, LACP) + text(3, flags) + text(4, token)


def entry_list(*entries, token="t0k3n"):
    return text(1, client(token)) + b"".join(text(2, one) for one in entries)


def shut_signal(protocol, *states):
    """states are pairs of an identifier and a truth value."""
    return number(1, protocol) + b"".join(
        text(2, text(1, zorid(*identifier)) + number(2, state)) for identifier, state in states)


def lag_member(lag=(0, 0, 2, 1), member=(0, 0, 0, 5)):
    return text(1, zorid(*lag)) + text(2, zorid(*member)) + number(3, 77) + number(4, 1)
