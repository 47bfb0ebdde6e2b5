<root>
	<node
		orientation={{ w: -1.000000, x: 0.000000, y: 0.000000, z: 0.000000 }}
		position={{ x: 0.000000, y: 0.000000, z: 0.000000 }}
		scale={{ x: 1.000000, y: 1.000000, z: 1.000000 }}>
		<mesh
			{...{ url: 'Bookshelf.mesh' }}
			physical={{ raycast: true, shapes: [ { shape: "mesh", mass: 1, offset: { x: 0, y: 0, z: 0 }, rotation: { w: 1, x: 0, y: 0, z: 0 }, mesh: "Bookshelf.mesh_phy.obj" } ] }}>
		</mesh>
	</node>
	<node
		orientation={{ w: -1.000000, x: 0.000000, y: 0.000000, z: 0.000000 }}
		position={{ x: 0.000000, y: 0.000000, z: 0.000000 }}
		scale={{ x: 1.000000, y: 1.000000, z: 1.000000 }}>
		<mesh
			{...{ url: 'No faces.mesh' }}
			physical={{ raycast: true, shapes: [ { shape: "mesh", mass: 1, offset: { x: 0, y: 0, z: 0 }, rotation: { w: 1, x: 0, y: 0, z: 0 }, mesh: "No faces.mesh_phy.obj" } ] }}>
		</mesh>
	</node>
	<node
		orientation={{ w: -1.000000, x: 0.000000, y: 0.000000, z: 0.000000 }}
		position={{ x: 0.000000, y: 0.000000, z: 0.000000 }}
		scale={{ x: 1.000000, y: 1.000000, z: 1.000000 }}>
		<mesh
			{...{ url: 'Fine.mesh' }}
			physical={{ raycast: true, shapes: [ { shape: "mesh", mass: 1, offset: { x: 0, y: 0, z: 0 }, rotation: { w: 1, x: 0, y: 0, z: 0 }, mesh: "Fine.mesh_phy.obj" } ] }}>
		</mesh>
	</node>
	<node
		orientation={{ w: -1.000000, x: 0.000000, y: 0.000000, z: 0.000000 }}
		position={{ x: 0.000000, y: 0.000000, z: 0.000000 }}
		scale={{ x: 1.000000, y: 1.000000, z: 1.000000 }}>
		<mesh
			{...{ url: 'Chair.mesh' }}
			physical={{ raycast: true, shapes: [ { shape: "mesh", mass: 1, offset: { x: 0, y: 0, z: 0 }, rotation: { w: 1, x: 0, y: 0, z: 0 }, mesh: "Chair.mesh_phy.obj" } ] }}>
		</mesh>
	</node>
	<node
		orientation={{ w: -1.000000, x: 0.000000, y: 0.000000, z: 0.000000 }}
		position={{ x: 0.000000, y: 0.000000, z: 0.000000 }}
		scale={{ x: 1.000000, y: 1.000000, z: 1.000000 }}>
		<mesh
			{...{ url: 'Dot.mesh' }}
			physical={{ raycast: true, shapes: [ { shape: "mesh", mass: 1, offset: { x: 0, y: 0, z: 0 }, rotation: { w: 1, x: 0, y: 0, z: 0 }, mesh: "Dot.mesh_phy.obj" } ] }}>
		</mesh>
	</node>
</root>

