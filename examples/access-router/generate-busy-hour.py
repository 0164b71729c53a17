#!/usr/bin/env python3
"""Prints busy-hour.jsonl: an hour in the life of an access router, for zorvd --play.

The same output each time: the random numbers have a fixed seed, and no clock is read. The numbers of the alarm types
come from alarm-model.xml. README.md tells what happens in which minute.
"""

import json
import pathlib
import random
import xml.etree.ElementTree

HERE = pathlib.Path(__file__).resolve().parent
HEADER = {
    "scenario": "a busy hour of an access router",
    "start": "2025-03-12T07:00:00Z",
    "description": "start-up, flapping links, a dying fan, a card reset, guessed passwords, an upgrade, a new model",
}
NODE = "ManagedElement=1"
ALARM_MODELS = NODE + ",SystemFunctions=1,Fm=1"
LONG_TEXT_LENGTH = 1200

# Who on the node publishes what: the framework and the structure version that its software was built with.
APPLICATION = {}
OLD_EQUIPMENT_AGENT = {"framework": "zorv", "version": 2}
OLD_ROUTING_AGENT = {"framework": "yalt", "version": 2}
SITE_CONTROLLER = {"framework": "zorv", "version": 1}
BATTERY_CONTROLLER = {"framework": "yalt", "version": 1}


def minute(minutes, seconds=0):
    return minutes * 60 + seconds


def slot(number):
    return f"{NODE},Equipment=1,Slot={number}"


def port(slotNumber, number):
    # Always two digits: a clear that finds no alarm of its name takes the name for a pattern, and that of port 1 would
    # also be found in that of port 12.
    return f"{slot(slotNumber)},Port={number:02}"


def bgpPeer(address):
    return f"{NODE},Routing=1,BgpPeer={address}"


class Hour:
    """Collects actions and prints them in the order of their time; those of the same time as they were added."""

    def __init__(self):
        self.random = random.Random(20250312)
        self.actions = []
        self.typeNumbers = {}
        for element in xml.etree.ElementTree.parse(HERE / "alarm-model.xml").iter("object"):
            if element.get("dn").startswith("FmAlarmType="):
                self.addType(element.get("dn"), element.findtext("majorType"), element.findtext("minorType"))

    def addType(self, dn, majorType, minorType):
        self.typeNumbers[dn.rpartition("=")[2]] = (int(majorType), int(minorType))

    def between(self, low, high):
        # random() alone is promised to give the same numbers in every version of Python.
        return low + (high - low) * self.random.random()

    def act(self, at, what):
        self.actions.append({"at": round(at, 3), **what})

    def notify(self, kind, at, alarmType, dn, contents, sender):
        majorType, minorType = self.typeNumbers.get(alarmType) or alarmType
        notification = {"dn": dn, "majorType": majorType, "minorType": minorType}
        notification.update((name, value) for name, value in contents.items() if value)
        self.act(at, {kind: notification, **sender})

    def raiseAlarm(self, at, alarmType, dn, severity, text, info=None, sender=APPLICATION):
        self.notify("raise", at, alarmType, dn, {"severity": severity, "text": text, "info": info}, sender)

    def clear(self, at, alarmType, dn, text="", sender=APPLICATION):
        self.notify("clear", at, alarmType, dn, {"text": text}, sender)

    def alert(self, at, alarmType, dn, severity, text, info=None, sender=APPLICATION):
        self.notify("alert", at, alarmType, dn, {"severity": severity, "text": text, "info": info}, sender)

    def settle(self, at, quietSeconds=True):
        self.act(at, {"settle": quietSeconds})

    def manage(self, at, what):
        """An action on the node itself. Fault management takes these first, so they stand alone."""
        self.settle(at - 0.2)
        self.act(at, what)
        self.settle(at + 0.2)

    def print(self):
        print(json.dumps(HEADER, ensure_ascii=False))
        for action in sorted(self.actions, key=lambda each: each["at"]):
            print(json.dumps(action, ensure_ascii=False))


def startUp(hour):
    """07:00 to 07:04. The node restarts; what is not up yet is raised, and cleared as it comes up."""
    hour.settle(0, 2)
    hour.alert(1, "nodeRestarted", NODE, "WARNING", "restarted after a power cycle",
               [["cause", "power cycle"], ["software", "4.2.1"], ["uptime before", "211 days"]])

    # Every port agent first clears what it may have left behind: there is nothing, and nothing comes of it.
    for slotNumber in (1, 2):
        for number in range(1, 13):
            hour.clear(2 + 0.05 * number, "lossOfSignal", port(slotNumber, number), "agent started")
            hour.clear(3 + 0.05 * number, "signalDegraded", port(slotNumber, number), "agent started")

    hour.raiseAlarm(5, "lineCardMissing", slot(5), "MINOR", "planned for 2025-04, not delivered",
                    sender=OLD_EQUIPMENT_AGENT)
    hour.raiseAlarm(6, "powerSupplyFailure", NODE + ",Equipment=1,PowerSupply=2", "MAJOR", "no output",
                    sender=OLD_EQUIPMENT_AGENT)
    hour.raiseAlarm(6.2, "powerRedundancyLost", NODE + ",Equipment=1", "MAJOR", "one of two supplies left",
                    sender=OLD_EQUIPMENT_AGENT)
    hour.raiseAlarm(7, "lossOfSynchronisation", NODE + ",Synchronisation=1", "MAJOR", "no source is locked yet")
    hour.raiseAlarm(8, "externalContact", NODE + ",Site=1,Contact=4", "INDETERMINATE",
                    "contact 4 is closed: \"Wasser im Keller?\"", sender=SITE_CONTROLLER)

    for number in range(1, 13):
        hour.raiseAlarm(10 + 0.1 * number, "lossOfSignal", port(1, number), "MAJOR", "no light")
    for number in (3, 4, 5, 7, 8, 11):
        hour.raiseAlarm(12 + 0.1 * number, "lossOfSignal", port(2, number), "MAJOR", "no light")
    for number, address in enumerate(("192.0.2.17", "192.0.2.33", "2001:db8::17")):
        hour.raiseAlarm(15 + number, "bgpSessionDown", bgpPeer(address), "MAJOR", "idle",
                        sender=OLD_ROUTING_AGENT)
    for number, name in enumerate(("core-a", "core-b")):
        hour.raiseAlarm(18 + number, "isisAdjacencyDown", f"{NODE},Routing=1,IsisAdjacency={name}", "MINOR",
                        "down since start")

    # Ports 10 to 12 of slot 1 are in service with nothing connected: these alarms stay.
    for number in range(1, 10):
        hour.clear(40 + 2 * number, "lossOfSignal", port(1, number), "light is there")
    for number in (3, 4, 5, 7, 8, 11):
        hour.clear(60 + number, "lossOfSignal", port(2, number), "light is there")
    for number, name in enumerate(("core-a", "core-b")):
        hour.clear(90 + 4 * number, "isisAdjacencyDown", f"{NODE},Routing=1,IsisAdjacency={name}", "up")
    for number, address in enumerate(("192.0.2.17", "192.0.2.33", "2001:db8::17")):
        hour.clear(100 + 5 * number, "bgpSessionDown", bgpPeer(address), "established", sender=OLD_ROUTING_AGENT)
    hour.clear(150, "powerSupplyFailure", NODE + ",Equipment=1,PowerSupply=2", "12.1 V", sender=OLD_EQUIPMENT_AGENT)
    hour.clear(150.2, "powerRedundancyLost", NODE + ",Equipment=1", "two supplies", sender=OLD_EQUIPMENT_AGENT)
    hour.clear(200, "lossOfSynchronisation", NODE + ",Synchronisation=1", "locked to source 1")


def repeatedRaises(hour):
    """07:04 to 08:00. Agents that repeat a raise for as long as the fault lasts: nothing new, nothing reported."""
    for second in range(minute(4), minute(60), 30):
        for number in (10, 11, 12):
            hour.raiseAlarm(second + number / 100, "lossOfSignal", port(1, number), "MAJOR", "no light")
    for second in range(minute(5), minute(52), 120):
        # The model fixes this severity; one that only differs there changes nothing.
        hour.raiseAlarm(second, "lineCardMissing", slot(5), "CRITICAL", "planned for 2025-04, not delivered",
                        sender=OLD_EQUIPMENT_AGENT)


def thresholds(hour):
    """All the hour. Counters and probes that tell each crossing once."""
    queues = ("voice", "video", "best-effort")
    for number in range(18):
        at = minute(4.5) + number * 180 + hour.between(0, 40)
        name = queues[number % len(queues)]
        hour.alert(at, "thresholdCrossed", f"{port(2, 1 + number % 4)},Queue={name}", "MINOR",
                   f"{70 + int(hour.between(0, 29))} % used, threshold 70 %",
                   {"interval": "15 min", "counter": "queueDepth", "direction": "rising"})
    for number in range(4):
        hour.alert(minute(8 + 13 * number, 20), "responseTimeExcessive", f"{NODE},Probe=zrh-fra", "WARNING",
                   f"{40 + 3 * number} ms to Frankfurt am Main, agreed 35 ms", sender=OLD_ROUTING_AGENT)
    for number in range(2):
        hour.raiseAlarm(minute(24 + 7 * number), "queueCongestion", f"{port(1, 2)},Queue=voice", "MAJOR",
                        "drops in a class without drops", [["class", "EF"], ["drops", str(1840 + 311 * number)]])
        hour.clear(minute(25 + 7 * number), "queueCongestion", f"{port(1, 2)},Queue=voice", "no drops for 60 s")


def flappingLinks(hour):
    """07:10 to 07:20. Six links with a bad patch panel, and the BGP sessions over two of them, go up and down."""
    ports = (3, 4, 5, 7, 8, 11)
    for number in ports:
        at = minute(10) + hour.between(0, 5)
        while at < minute(19, 30):
            hour.raiseAlarm(at, "lossOfSignal", port(2, number), "MAJOR", "no light")
            at += hour.between(0.8, 4)
            hour.clear(at, "lossOfSignal", port(2, number), "light is there")
            at += hour.between(0.8, 4)
    for address in ("192.0.2.17", "192.0.2.33"):
        at = minute(10) + hour.between(10, 20)
        while at < minute(19):
            hour.raiseAlarm(at, "bgpSessionDown", bgpPeer(address), "MAJOR", "hold timer expired",
                            sender=OLD_ROUTING_AGENT)
            at += hour.between(8, 15)
            hour.clear(at, "bgpSessionDown", bgpPeer(address), "established", sender=OLD_ROUTING_AGENT)
            at += hour.between(8, 15)

    # The panel is replaced. The last word of each comes in the order of the alarm list, so that they end in this order
    # too. Port 11 is forgotten and stays down.
    for number in ports:
        hour.raiseAlarm(minute(19, 50 + number / 10), "lossOfSignal", port(2, number), "MAJOR", "no light")
    for number in ports[:-1]:
        hour.clear(minute(20, number / 10), "lossOfSignal", port(2, number), "light is there, panel replaced")
    for number, address in enumerate(("192.0.2.17", "192.0.2.33")):
        hour.raiseAlarm(minute(19, 52 + number), "bgpSessionDown", bgpPeer(address), "MAJOR", "link down",
                        sender=OLD_ROUTING_AGENT)
        hour.clear(minute(20, 2 + number), "bgpSessionDown", bgpPeer(address), "established", sender=OLD_ROUTING_AGENT)
    hour.settle(minute(20, 10), 4.5)


def dyingFan(hour):
    """07:22 to 07:34. A fan gets slower and stops, a line card gets hot; the fan tray is replaced."""
    fan = NODE + ",Equipment=1,FanTray=1,Fan=2"
    for at, severity, percent in ((22, "WARNING", 12), (23.5, "MINOR", 27), (25.5, "MAJOR", 58)):
        hour.raiseAlarm(minute(at), "fanFailure", fan, severity, f"{percent} % too slow", sender=OLD_EQUIPMENT_AGENT)
    hour.raiseAlarm(minute(27), "fanFailure", fan, "CRITICAL", "stands still", sender=OLD_EQUIPMENT_AGENT)
    for at, severity, celsius in ((24, "WARNING", 61), (26, "MINOR", 68), (28, "MAJOR", 75), (31.5, "MINOR", 66),
                                  (32.5, "WARNING", 62)):
        hour.raiseAlarm(minute(at), "highTemperature", slot(3), severity, f"{celsius} °C at the air outlet",
                        {"sensor": "outlet", "°C": str(celsius)})
    hour.raiseAlarm(minute(29), "doorOpen", NODE + ",Site=1,Door=1", "WARNING", "door 1", sender=SITE_CONTROLLER)
    hour.alert(minute(30), "maintenanceError", NODE + ",Equipment=1,FanTray=1", "WARNING",
               "fan tray pulled while in service")
    hour.alert(minute(30, 20), "unitInserted", NODE + ",Equipment=1,FanTray=1", "WARNING", "fan tray, serial 0451",
               sender=OLD_EQUIPMENT_AGENT)
    hour.clear(minute(30, 25), "fanFailure", fan, "4200/min", sender=OLD_EQUIPMENT_AGENT)
    hour.clear(minute(31), "doorOpen", NODE + ",Site=1,Door=1", sender=SITE_CONTROLLER)
    hour.clear(minute(33.5), "highTemperature", slot(3), "54 °C at the air outlet")


def lineCardReset(hour):
    """07:36 to 07:40. A line card resets; its 24 ports come back with one clear for all."""
    hour.raiseAlarm(minute(36), "lineCardFailure", slot(3), "CRITICAL", "no answer for 10 s")
    for number in range(1, 25):
        hour.raiseAlarm(minute(36, 1 + number / 20), "lossOfSignal", port(3, number), "MAJOR", "line card is down")
    for number in (2, 3, 5, 7, 11, 13, 17, 19):
        hour.raiseAlarm(minute(36, 4 + number / 20), "remoteFault", port(3, number), "MINOR",
                        "far end does not receive")
    for number in (5, 6):
        hour.raiseAlarm(minute(36, 8 + number), "aggregationMemberDown", f"{NODE},Aggregate=3,Member={number}",
                        "WARNING", "not collecting, not distributing")
    hour.raiseAlarm(minute(36, 20), "processTerminated", slot(3) + ",Process=forwarder", "MAJOR", coreDump(),
                    [["signal", "11"], ["restarts", "1"]])
    hour.alert(minute(38), "lineCardRestarted", slot(3), "WARNING", "watchdog reset",
               [["reason", "watchdog <forwarder>"], ["duration", "118 s"]])
    hour.clear(minute(38, 5), "processTerminated", slot(3) + ",Process=forwarder", "restarted")
    hour.clear(minute(38, 10), "lineCardFailure", slot(3), "in service")
    hour.clear(minute(38, 20), "lossOfSignal", f"^{slot(3)},Port=[0-9]+$", "line card is back in service")
    hour.clear(minute(38, 21), "remoteFault", f"^{slot(3)},Port=(0[2-7]|1[0-9])$", "line card is back in service")
    hour.clear(minute(38, 30), "aggregationMemberDown", f"^{NODE},Aggregate=3,", "distributing")


def coreDump():
    """A text such as programs write when they are asked for "everything": far longer than anybody reads."""
    frames = []
    while len(" ".join(frames)) < LONG_TEXT_LENGTH:
        number = len(frames)
        frames.append(f"#{number} 0x{0x5555_5560_0000 + 0x1A4 * number:012x} forwarder+0x{0x3F0 + 0x1A4 * number:x}")
    return "segmentation fault: " + " ".join(frames)


def guessedPassword(hour):
    """07:42 to 07:44. Somebody tries passwords; an account is locked, the flood ends at an access list."""
    users = ("root", "admin", "operator", "jürgen", "管理者", "o'brien", "<script>", "a&b", "łukasz")
    attacker = "203.0.113.66"
    for number in range(36):
        user = users[number % len(users)]
        hour.alert(minute(42, 1.5 * number), "loginFailed", NODE + ",Security=1,Service=ssh", "MINOR",
                   f"login of {user} from {attacker} refused",
                   [["user", user], ["address", attacker], ["attempt", str(number + 1)]])
    hour.raiseAlarm(minute(42, 40.1), "accountLocked", NODE + ",Security=1,User=operator", "MINOR",
                    "locked after 4 refused logins")
    hour.raiseAlarm(minute(42, 50.1), "denialOfService", NODE + ",Security=1,Service=ssh", "MAJOR",
                    f"300 connections a minute from {attacker}")
    hour.alert(minute(43, 5), "privilegeRefused", NODE + ",Security=1,User=guest", "MINOR",
               "guest asked for \"show secrets\"", {"role": "read-only", "command": "show secrets"})
    hour.clear(minute(43.5), "denialOfService", NODE + ",Security=1,Service=ssh", "access list in place")
    hour.clear(minute(44), "accountLocked", NODE + ",Security=1,User=operator", "unlocked by admin")


def upgrade(hour):
    """07:45 to 07:50. Alarms are suppressed for an upgrade: only what is critical passes, and all of it is logged."""
    hour.raiseAlarm(minute(45), "maintenanceMode", NODE, "WARNING", "upgrade to 4.3.0 announced")
    hour.manage(minute(45, 10), {"suppress": "on"})
    for number in (1, 2, 3, 4):
        hour.raiseAlarm(minute(45.5, number), "versionMismatch", slot(number), "MAJOR", "runs 4.2.1, node runs 4.3.0")
    hour.raiseAlarm(minute(46), "processorOverload", NODE + ",Equipment=1,Processor=1", "MINOR", "load 97 %")
    hour.raiseAlarm(minute(46.2), "isisAdjacencyDown", NODE + ",Routing=1,IsisAdjacency=core-a", "MINOR",
                    "restart of the routing process")
    hour.raiseAlarm(minute(46.3), "ldpSessionDown", NODE + ",Routing=1,LdpSession=198.51.100.1", "MAJOR",
                    "non existent", sender=OLD_ROUTING_AGENT)
    hour.raiseAlarm(minute(46.5), "processorOverload", NODE + ",Equipment=1,Processor=1", "CRITICAL", "load 100 %")
    hour.alert(minute(46.6), "configurationRejected", NODE, "WARNING", "line 212: unknown keyword \"flowspec\"")
    hour.clear(minute(47), "isisAdjacencyDown", NODE + ",Routing=1,IsisAdjacency=core-a", "up")
    hour.raiseAlarm(minute(46.8), "fabricRedundancyLost", NODE + ",Equipment=1,Fabric=2", "MINOR", "waits for restart")
    hour.raiseAlarm(minute(47.2), "processorOverload", NODE + ",Equipment=1,Processor=1", "MINOR", "load 91 %")
    hour.clear(minute(47.5), "processorOverload", NODE + ",Equipment=1,Processor=1", "load 35 %")
    hour.clear(minute(48), "ldpSessionDown", NODE + ",Routing=1,LdpSession=198.51.100.1", "operational",
               sender=OLD_ROUTING_AGENT)
    for number in (1, 2, 3):
        hour.clear(minute(48.5, number), "versionMismatch", slot(number), "runs 4.3.0")
    hour.manage(minute(50), {"suppress": "off"})
    hour.clear(minute(50, 20), "maintenanceMode", NODE, "upgrade done")
    hour.raiseAlarm(minute(50, 40), "versionMismatch", slot(4), "MAJOR", "runs 4.2.1, node runs 4.3.0: upgrade failed")


def newModel(hour):
    """07:51 to 07:55. A type that the model does not know; then the model learns it, and more of it changes."""
    newType = "FmAlarmType=laserBiasHigh"
    laser = port(2, 1) + ",Laser=1"
    numbers = (32473, 111)
    hour.raiseAlarm(minute(51), numbers, laser, "MAJOR", "bias 84 mA, limit 70 mA")
    hour.clear(minute(51, 30), numbers, laser, "bias 66 mA")

    hour.manage(minute(52), {"create": {"dn": f"{ALARM_MODELS},FmAlarmModel=transport,{newType}", "attributes": {
        "majorType": numbers[0], "minorType": numbers[1], "isStateful": True, "eventType": "EQUIPMENTALARM",
        "probableCause": 67, "specificProblem": "Laser Bias Current High",
        "additionalText": "The laser of a transmitter ages", "configuredSeverity": "MINOR"}}})
    hour.addType(newType, *numbers)
    hour.raiseAlarm(minute(52.5), "laserBiasHigh", laser, "MAJOR", "bias 86 mA, limit 70 mA")

    # An alarm that is active takes the new severity of its type with the next raise, a new alert at once.
    hour.manage(minute(53), {"set": {"dn": f"{ALARM_MODELS},FmAlarmModel=equipment,FmAlarmType=lineCardMissing",
                                     "attributes": {"configuredSeverity": "WARNING"}}})
    hour.manage(minute(53, 10), {"set": {"dn": f"{ALARM_MODELS},FmAlarmModel=security,FmAlarmType=loginFailed",
                                         "attributes": {"configuredSeverity": "MAJOR"}}})
    hour.raiseAlarm(minute(53, 20), "lineCardMissing", slot(5), "CRITICAL", "planned for 2025-04, not delivered",
                    sender=OLD_EQUIPMENT_AGENT)
    hour.alert(minute(53, 30), "loginFailed", NODE + ",Security=1,Service=ssh", "MINOR",
               "login of root from 203.0.113.67 refused", [["user", "root"], ["address", "203.0.113.67"]])

    hour.manage(minute(54), {"set": {"dn": NODE, "attributes": {"externalId": "access-router-7"}}})


def lastMinutes(hour):
    """07:55 to 08:00. Odds and ends, under the node's new name."""
    hour.raiseAlarm(minute(55), "mainsFailure", NODE + ",Site=1", "MAJOR", "Netzausfall Höngg: 0 V",
                    sender=SITE_CONTROLLER)
    hour.raiseAlarm(minute(55.1), "batteryDischarging", NODE + ",Site=1,Battery=1", "MINOR", "98 %",
                    sender=BATTERY_CONTROLLER)
    hour.raiseAlarm(minute(55.6), "batteryDischarging", NODE + ",Site=1,Battery=1", "MAJOR", "71 %",
                    sender=BATTERY_CONTROLLER)
    hour.clear(minute(56), "mainsFailure", NODE + ",Site=1", "230 V", sender=SITE_CONTROLLER)
    hour.clear(minute(56.1), "batteryDischarging", NODE + ",Site=1,Battery=1", "charging", sender=BATTERY_CONTROLLER)
    hour.raiseAlarm(minute(56.5), "configurationTampered", NODE + ",Security=1", "MAJOR",
                    "checksum of the start-up configuration differs")
    hour.alert(minute(56.6), "auditRecordMissing", NODE + ",Security=1", "MINOR", "records 4711 to 4713 are missing")
    hour.raiseAlarm(minute(57), "certificateExpired", NODE + ",Security=1,Certificate=netconf", "MINOR",
                    "valid until 2025-03-12T07:57:00Z")
    hour.alert(minute(57.2), "timeServerDelayed", NODE + ",Synchronisation=1,Server=192.0.2.123", "WARNING",
               "answers after 2.3 s")
    hour.alert(minute(57.5), "outOfHoursLogin", NODE + ",Security=1,User=contractor", "WARNING",
               "contractor logged in before 08:00", [["user", "contractor"], ["hours", "08:00-18:00"]])
    hour.raiseAlarm(minute(58), "cableTamper", NODE + ",Site=1,Cable=OF-12", "CRITICAL",
                    "attenuation 3 dB higher, 2.4 km from here")
    hour.raiseAlarm(minute(58.3), "signalDegraded", port(1, 9), "MINOR", "error ratio 2·10⁻⁶",
                    [["lane", "3"], ["ratio", "2·10⁻⁶"]])
    hour.raiseAlarm(minute(58.6), "memoryLow", NODE + ",Equipment=1,Processor=1", "WARNING", "11 % free")
    # Nobody has a type for this one; a clear of something unknown is told as a warning.
    hour.clear(minute(59), (32473, 999), NODE + ",Equipment=1,Slot=6,Port=01", "unknown to everybody")
    hour.clear(minute(59.5), "laserBiasHigh", port(2, 1) + ",Laser=1", "laser replaced")


def main():
    hour = Hour()
    for story in (startUp, repeatedRaises, thresholds, flappingLinks, dyingFan, lineCardReset, guessedPassword, upgrade,
                  newModel, lastMinutes):
        story(hour)
    hour.print()


if __name__ == "__main__":
    main()
