CREATE VIRTUAL TABLE Picking USING fts5(barcode, box, datepicked, descr, doc, item, ordernum, orderqty, pickqty, sent);
CREATE TABLE Items (barcode TEXT, item TEXT, descr TEXT);
CREATE INDEX Picking_doc_box_item ON Picking (doc, box, item);
CREATE INDEX Picking_doc_sent_datepicked ON Picking (doc, sent, datepicked);
CREATE INDEX Items_item ON Items (item);
CREATE INDEX Items_barcode ON Items (barcode);
INSERT INTO Picking (doc) VALUES ('4711');
PRAGMA user_version = 1;
