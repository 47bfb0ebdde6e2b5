<root>
	<node
		orientation={{ w: -1.000000, x: 0.000000, y: 0.000000, z: 0.000000 }}
		position={{ x: 0.000000, y: 0.000000, z: 0.000000 }}
		scale={{ x: 1.000000, y: 1.000000, z: 1.000000 }}>
		<mesh
			{...{ url: 'n0.mesh' }}
			physical={{ raycast: true, shapes: [ { shape: "mesh", mass: 1, offset: { x: 0, y: 0, z: 0 }, rotation: { w: 1, x: 0, y: 0, z: 0 }, mesh: "n0.mesh_phy.obj" } ] }}>
		</mesh>
	</node>
	<node
		orientation={{ w: -1.000000, x: 0.000000, y: 0.000000, z: 0.000000 }}
		position={{ x: 0.000000, y: 0.000000, z: 0.000000 }}
		scale={{ x: 1.000000, y: 1.000000, z: 1.000000 }}>
		<mesh
			{...{ url: 'n1.mesh' }}
			physical={{ raycast: true, shapes: [ { shape: "mesh", mass: 1, offset: { x: 0, y: 0, z: 0 }, rotation: { w: 1, x: 0, y: 0, z: 0 }, mesh: "n1.mesh_phy.obj" } ] }}>
		</mesh>
	</node>
	<node
		orientation={{ w: -1.000000, x: 0.000000, y: 0.000000, z: 0.000000 }}
		position={{ x: 0.000000, y: 0.000000, z: 0.000000 }}
		scale={{ x: 1.000000, y: 1.000000, z: 1.000000 }}>
		<mesh
			{...{ url: 'n2.mesh' }}
			physical={{ raycast: true, shapes: [ { shape: "mesh", mass: 1, offset: { x: 0, y: 0, z: 0 }, rotation: { w: 1, x: 0, y: 0, z: 0 }, mesh: "n2.mesh_phy.obj" } ] }}>
		</mesh>
	</node>
	<node
		orientation={{ w: -1.000000, x: 0.000000, y: 0.000000, z: 0.000000 }}
		position={{ x: 0.000000, y: 0.000000, z: 0.000000 }}
		scale={{ x: 1.000000, y: 1.000000, z: 1.000000 }}>
		<mesh
			{...{ url: 'n3.mesh' }}
			physical={{ raycast: true, shapes: [ { shape: "mesh", mass: 1, offset: { x: 0, y: 0, z: 0 }, rotation: { w: 1, x: 0, y: 0, z: 0 }, mesh: "n3.mesh_phy.obj" } ] }}>
		</mesh>
	</node>
</root>

