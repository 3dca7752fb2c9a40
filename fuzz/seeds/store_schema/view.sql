CREATE TABLE Items (barcode TEXT, item TEXT, descr TEXT);
CREATE INDEX Picking_doc_box_item ON Picking (doc, box, item);
CREATE INDEX Picking_doc_sent_datepicked ON Picking (doc, sent, datepicked);
CREATE INDEX Items_item ON Items (item);
CREATE INDEX Items_barcode ON Items (barcode);
CREATE VIEW Picking AS SELECT run() AS barcode, '' AS box, 0 AS datepicked, '' AS descr, '4711' AS doc, '' AS item, '' AS ordernum, 1 AS orderqty, 1 AS pickqty, 0 AS sent, 1 AS rowid;
CREATE TRIGGER v INSTEAD OF INSERT ON Picking BEGIN SELECT run(); END;
PRAGMA user_version = 1;
