#pragma once

#include "host/server/ServerTables.h"
#include "host/system/Database.h"

namespace host {

/// What a version with format 2 wrote when it had stored a project, then the project without its study
/// "gone", and then another project with a view item. Both studies have the name "S" and both parts the name
/// "A".
inline constexpr const char* kOlderTables = R"(
CREATE TABLE origin (text TEXT NOT NULL);
CREATE TABLE project (
    number INTEGER PRIMARY KEY,
    name TEXT NOT NULL UNIQUE
);
CREATE TABLE object (
    number INTEGER PRIMARY KEY,
    key TEXT NOT NULL UNIQUE,
    type TEXT NOT NULL,
    project INTEGER NOT NULL REFERENCES project (number),
    identifier TEXT NOT NULL,
    occurrence INTEGER NOT NULL,
    UNIQUE (project, identifier, occurrence)
);
CREATE TABLE node (
    number INTEGER PRIMARY KEY,
    object INTEGER NOT NULL REFERENCES object (number),
    above INTEGER REFERENCES node (number),
    section INTEGER NOT NULL,
    position INTEGER NOT NULL,
    shown INTEGER REFERENCES object (number),
    members TEXT NOT NULL
);
CREATE INDEX node_of_object ON node (object);
CREATE INDEX node_below ON node (above, section, position);
CREATE TABLE checksum (value INTEGER NOT NULL);
)";
inline constexpr const char* kOlderRows = R"(
INSERT INTO origin VALUES('ae9187');
INSERT INTO project VALUES(1,'P');
INSERT INTO project VALUES(2,'view');
INSERT INTO object VALUES(1,'PRJ-1-ae9187','SIMULATION',1,'id 1',0);
INSERT INTO object VALUES(2,'MOD-2-ae9187','CAEMODEL',1,'id 2',0);
INSERT INTO object VALUES(3,'PRT-3-ae9187','CAEPART',1,'id 3',0);
INSERT INTO object VALUES(4,'FIL-4-ae9187','CAEFILE',1,'id 4',0);
INSERT INTO object VALUES(5,'PRT-5-ae9187','CAEPART',1,'id 5',0);
INSERT INTO object VALUES(6,'FIL-6-ae9187','CAEFILE',1,'id 6',0);
INSERT INTO object VALUES(7,'MOD-7-ae9187','CAEMODEL',1,'id 7',0);
INSERT INTO object VALUES(8,'PRT-8-ae9187','CAEPART',1,'id 8',0);
INSERT INTO object VALUES(9,'MOD-9-ae9187','CAEMODEL',1,'id 9',0);
INSERT INTO object VALUES(10,'PRT-10-ae9187','CAEPART',1,'id 10',0);
INSERT INTO object VALUES(11,'PRJ-11-ae9187','SIMULATION',2,'id 1',0);
INSERT INTO object VALUES(12,'ITM-12-ae9187','CAEVIEWITEM',2,'id 2',0);
INSERT INTO object VALUES(13,'SUB-13-ae9187','CAESUBASSEMBLY',2,'id 3',0);
INSERT INTO node VALUES(10,9,NULL,0,2,NULL,'{"id":"9","name":"gone","type":"CAEMODEL","children":[]}');
INSERT INTO node VALUES(11,10,10,0,0,NULL,'{"id":"10","name":"A","type":"CAEPART"}');
INSERT INTO node VALUES(12,1,NULL,0,0,NULL,'{"id":"1","name":"P","type":"SIMULATION","children":[]}');
INSERT INTO node VALUES(13,2,12,0,0,NULL,'{"id":"2","name":"S","type":"CAEMODEL","children":[]}');
INSERT INTO node VALUES(14,3,13,0,0,NULL,'{"id":"3","name":"A","type":"CAEPART","files":[]}');
INSERT INTO node VALUES(15,4,14,1,0,NULL,'{"id":"4","name":"f","type":"CAEFILE","fileType":"CAD"}');
INSERT INTO node VALUES(16,5,13,0,1,NULL,'{"id":"5","name":"A","type":"CAEPART","files":[]}');
INSERT INTO node VALUES(17,4,16,1,0,NULL,'{"id":"4","name":"f","type":"CAEFILE","fileType":"CAD"}');
INSERT INTO node VALUES(18,6,16,1,1,NULL,'{"id":"6","name":"f","type":"CAEFILE","fileType":"Mesh"}');
INSERT INTO node VALUES(19,7,12,0,1,NULL,'{"id":"7","name":"S","type":"CAEMODEL","children":[]}');
INSERT INTO node VALUES(20,8,19,0,0,NULL,'{"id":"8","name":"A","type":"CAEPART"}');
INSERT INTO node VALUES(21,11,NULL,0,0,NULL,'{"id":"1","name":"view","type":"SIMULATION","children":[]}');
INSERT INTO node VALUES(22,12,21,0,0,13,'{"id":"2","name":"v","type":"CAEVIEWITEM","dbkey":"I"}');
INSERT INTO node VALUES(23,13,21,0,1,NULL,'{"id":"3","name":"a","type":"CAESUBASSEMBLY","dbkey":"I"}');
INSERT INTO checksum VALUES(-2884225859934802323);
)";
inline constexpr DatabaseKind kOlderKind = {kServerKind.application, 2, kServerKind.name};

}  // namespace host
