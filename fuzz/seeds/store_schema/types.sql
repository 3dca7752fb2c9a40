CREATE TABLE Picking (barcode TEXT, box TEXT, datepicked INTEGER, descr TEXT, doc TEXT, item TEXT, ordernum TEXT, orderqty INTEGER, pickqty INTEGER, sent INTEGER);
CREATE TABLE Items (barcode TEXT, item TEXT, descr TEXT);
CREATE INDEX Picking_doc_box_item ON Picking (doc, box, item);
CREATE INDEX Picking_doc_sent_datepicked ON Picking (doc, sent, datepicked);
CREATE INDEX Items_item ON Items (item);
CREATE INDEX Items_barcode ON Items (barcode);
INSERT INTO Picking VALUES (X'ff80','C1',9223372036854775807,zeroblob(20000),'4711','A',-1e308,-9223372036854775808,X'33',NULL);
INSERT INTO Items VALUES (1,2,3);
PRAGMA user_version = 1;
