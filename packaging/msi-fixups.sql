-- What the WiX source says but wixl 0.101 does not write, applied to its package by
-- tools/build-msi.sh, one statement a line (msibuild -q). Lines starting with "--"
-- are comments.
-- A plain shortcut to the program, not an advertised one (wixl writes the feature).
UPDATE Shortcut SET Target='[#QVMonitorExe]' WHERE Shortcut='StartMenuShortcut'
-- The start at logon goes where the monitor's AddToRun puts it on this Windows.
UPDATE Component SET Condition='VersionNT >= 600' WHERE Component='RunAtLogonUser'
UPDATE Component SET Condition='VersionNT < 600' WHERE Component='RunAtLogonMachine'
-- The data folder belongs to the program's component (wixl drops CreateFolder/@Directory).
INSERT INTO CreateFolder (Directory_, Component_) VALUES ('QVCOMMON', 'Monitor')
-- Ending the monitor: taskkill.exe from the system folder (type 34), deferred, as the
-- system, its result ignored (1024 + 2048 + 64).
UPDATE CustomAction SET Type=3170, Source='System64Folder', Target='"[System64Folder]taskkill.exe" /F /IM QVMonitor.exe' WHERE Action='EndMonitor'
UPDATE InstallExecuteSequence SET Sequence=1501 WHERE Action='EndMonitor'
-- On removal the class's keys go whole ("-"), for the machine and for the user who
-- removes the product (the running monitor registers itself for its user too).
INSERT INTO Registry (Registry, Root, `Key`, Name, Component_) VALUES ('RemoveClassMachine', 2, 'Software\Classes\CLSID\{1984E5BD-394A-449B-A09A-6648BCB1AF6F}', '-', 'Monitor')
INSERT INTO Registry (Registry, Root, `Key`, Name, Component_) VALUES ('RemoveProgIdMachine', 2, 'Software\Classes\QVMonitor.IMonitor', '-', 'Monitor')
INSERT INTO Registry (Registry, Root, `Key`, Name, Component_) VALUES ('RemoveInterfaceMachine', 2, 'Software\Classes\Interface\{BC8E9D57-8867-4B16-893C-187BDF70108D}', '-', 'Monitor')
INSERT INTO Registry (Registry, Root, `Key`, Name, Component_) VALUES ('RemoveTypeLibMachine', 2, 'Software\Classes\TypeLib\{653BCEE0-0E83-4D03-8210-EA583DC816E1}', '-', 'Monitor')
INSERT INTO Registry (Registry, Root, `Key`, Name, Component_) VALUES ('RemoveAppIdMachine', 2, 'Software\Classes\AppID\{1984E5BD-394A-449B-A09A-6648BCB1AF6F}', '-', 'Monitor')
INSERT INTO Registry (Registry, Root, `Key`, Name, Component_) VALUES ('RemoveAppIdExeMachine', 2, 'Software\Classes\AppID\QVMonitor.exe', '-', 'Monitor')
INSERT INTO Registry (Registry, Root, `Key`, Name, Component_) VALUES ('RemoveClassUser', 1, 'Software\Classes\CLSID\{1984E5BD-394A-449B-A09A-6648BCB1AF6F}', '-', 'Monitor')
INSERT INTO Registry (Registry, Root, `Key`, Name, Component_) VALUES ('RemoveProgIdUser', 1, 'Software\Classes\QVMonitor.IMonitor', '-', 'Monitor')
INSERT INTO Registry (Registry, Root, `Key`, Name, Component_) VALUES ('RemoveInterfaceUser', 1, 'Software\Classes\Interface\{BC8E9D57-8867-4B16-893C-187BDF70108D}', '-', 'Monitor')
INSERT INTO Registry (Registry, Root, `Key`, Name, Component_) VALUES ('RemoveTypeLibUser', 1, 'Software\Classes\TypeLib\{653BCEE0-0E83-4D03-8210-EA583DC816E1}', '-', 'Monitor')
-- A package of the same version replaces the installed one too (the build's own
-- packages share their version until it is raised): every version up to and including
-- this one (1 + 512). Attributes is a key column, so the row is written anew;
-- @VERSION@ is the package's version.
DELETE FROM Upgrade WHERE ActionProperty='WIX_UPGRADE_DETECTED'
INSERT INTO Upgrade (UpgradeCode, VersionMax, Attributes, ActionProperty) VALUES ('{283951F3-31CE-49FC-90BB-5321D94C51B5}', '@VERSION@', 513, 'WIX_UPGRADE_DETECTED')
