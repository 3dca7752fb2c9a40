CREATE TABLE Picking (barcode TEXT, box TEXT, datepicked INTEGER, descr TEXT, doc TEXT, item TEXT, ordernum TEXT, orderqty INTEGER, pickqty INTEGER, sent INTEGER);
CREATE TABLE Items (barcode TEXT, item TEXT, descr TEXT);
INSERT INTO Picking VALUES ('b','C1',1700000000000,'x','4711','A','A1',5,3,0);
INSERT INTO Picking VALUES ('b','C1',NULL,'x','4711','B','A1',5,3,1);
INSERT INTO Items VALUES ('b','A','One');
PRAGMA user_version = 1;
CREATE INDEX "i""; DELETE FROM Picking; --" ON Items (descr);
