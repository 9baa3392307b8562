#!/usr/bin/python3
"""The real power services of a machine whose power supplies a test makes up.

Runs under umockdev-wrapper, which replaces /sys for the services. Reads commands from standard input, one a line, and
answers each with "done":

    battery NAME KEY=VALUE...   add a battery, or change attributes of one
    mains NAME KEY=VALUE...     the same for a source of external power
    mouse NAME KEY=VALUE...     the same for the battery of a device that is no power supply of the machine
    remove NAME                 pull a battery or a source
    start PROGRAM               start a service of the machine
    stop, cont, kill PROGRAM    send it the signal

In a VALUE, "_charging" stands for " charging", since a blank separates words.
The services find the bus in DBUS_SYSTEM_BUS_ADDRESS.
"""
import os
import signal
import subprocess
import sys

import gi

gi.require_version("UMockdev", "1.0")
from gi.repository import UMockdev  # noqa: E402

KINDS = {
    "mains": {"type": "Mains", "online": "1"},
    "battery": {"type": "Battery", "present": "1", "technology": "Li-ion", "energy_full_design": "60000000",
                "voltage_now": "12000000", "power_now": "9000000"},
    "mouse": {"type": "Battery", "present": "1", "scope": "Device"},
}
SIGNALS = {"stop": signal.SIGSTOP, "cont": signal.SIGCONT, "kill": signal.SIGKILL}

machine = UMockdev.Testbed.new()
devices = {}
services = {}


def show(kind, name, values):
    """Adds a device with these attributes, or changes them and has the kernel report it."""
    if name not in devices:
        attributes = [text for pair in {**KINDS[kind], **values}.items() for text in pair]
        devices[name] = machine.add_device("power_supply", name, None, attributes, [])
        machine.uevent(devices[name], "add")
        return
    for key, value in values.items():
        machine.set_attribute(devices[name], key, value)
    machine.uevent(devices[name], "change")


def carry_out(word, name, *rest):
    if word in KINDS:
        show(word, name, dict(pair.replace("_charging", " charging").split("=", 1) for pair in rest))
    elif word == "remove":
        device = devices.pop(name)
        machine.uevent(device, "remove")
        machine.remove_device(device)
    elif word == "start":
        services[name] = subprocess.Popen(["/usr/libexec/" + name], stdout=subprocess.DEVNULL,
                                          stderr=subprocess.DEVNULL)
    else:
        services[name].send_signal(SIGNALS[word])
        if word == "kill":
            services.pop(name).wait()


try:
    for line in sys.stdin:
        carry_out(*line.split())
        print("done", flush=True)
finally:
    for service in services.values():
        service.kill()
    machine = None
